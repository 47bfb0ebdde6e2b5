#include "cli/name_glob.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace velinor {
namespace {

bool fits(std::string_view pattern, std::string_view name) {
    return NameGlob(pattern).matches(name);
}

TEST(NameGlob, TakesTheWholeName) {
    EXPECT_TRUE(fits("Chair", "Chair"));
    EXPECT_FALSE(fits("Chair", "Chair 2"));
    EXPECT_FALSE(fits("Chair", "A Chair"));
    EXPECT_FALSE(fits("chair", "Chair"));
    EXPECT_TRUE(fits("", ""));
    EXPECT_FALSE(fits("", "a"));
}

TEST(NameGlob, KnowsStarsAndQuestionMarks) {
    EXPECT_TRUE(fits("Chair*", "Chair"));
    EXPECT_TRUE(fits("Chair*", "Chair \n 2"));
    EXPECT_TRUE(fits("*ai*", "Chair"));
    EXPECT_TRUE(fits("Box?", "Box1"));
    EXPECT_FALSE(fits("Box?", "Box"));
    EXPECT_FALSE(fits("Box?", "Box10"));
    EXPECT_TRUE(fits("?", "\xD0\x96")) << "one character of two bytes";
    EXPECT_TRUE(fits("**", "x"));
}

TEST(NameGlob, KnowsSets) {
    EXPECT_TRUE(fits("Box[0-9]", "Box7"));
    EXPECT_FALSE(fits("Box[0-9]", "Boxx"));
    EXPECT_TRUE(fits("Box[!0-9]", "Boxx"));
    EXPECT_TRUE(fits("Box[^0-9]", "Boxx"));
    EXPECT_FALSE(fits("Box[!0-9]", "Box7"));
    EXPECT_TRUE(fits("[]]", "]"));
    EXPECT_TRUE(fits("[!]]", "a"));
    EXPECT_TRUE(fits("[a-]", "-"));
    EXPECT_TRUE(fits("[-a]", "-"));
    EXPECT_TRUE(fits("[\\d]", "\\"));
    EXPECT_FALSE(fits("[\\d]", "7"));
    EXPECT_TRUE(fits("[[:]", ":"));
    EXPECT_TRUE(fits("[\xD0\x90-\xD0\xAF]", "\xD0\x96")) << "a range beyond ASCII";
}

TEST(NameGlob, TakesOtherCharactersAsTheyStand) {
    EXPECT_TRUE(fits("a.b+(c)|^$", "a.b+(c)|^$"));
    EXPECT_FALSE(fits("a.b", "axb"));
    EXPECT_TRUE(fits("Chair [color: red", "Chair [color: red")) << "a bracket that is not closed";
    EXPECT_TRUE(fits("[", "["));
    EXPECT_TRUE(fits("[]", "[]"));
    EXPECT_TRUE(fits("[!]", "[!]"));
    EXPECT_TRUE(fits("Chair \\[*]", "Chair [color: red]"));
    EXPECT_TRUE(fits("\\*", "*"));
    EXPECT_FALSE(fits("\\*", "a"));
    EXPECT_TRUE(fits("a\\", "a\\"));
    EXPECT_TRUE(fits("\\\xD0\x96", "\xD0\x96"));
    EXPECT_TRUE(fits(std::string("a\0b", 3), std::string("a\0b", 3)));
}

TEST(NameGlob, TakesLongPatterns) {
    const std::string name(1 << 16, 'x');
    EXPECT_TRUE(fits(name, name));
}

TEST(NameGlob, RefusesWhatIsNoSet) {
    EXPECT_THROW(NameGlob("[z-a]"), std::invalid_argument);
    EXPECT_THROW(NameGlob(std::string((1 << 16) + 1, '?')), std::invalid_argument);
}

TEST(NameGlob, IsLinearInTheName) {
    EXPECT_FALSE(fits("*a*a*a*a*a*a*a*a*b", std::string(1 << 20, 'a')));
}

}  // namespace
}  // namespace velinor
