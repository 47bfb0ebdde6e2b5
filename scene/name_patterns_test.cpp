#include "scene/name_patterns.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace velinor {
namespace {

struct MatchedName {
    const char* name;
    bool isWebtable;
    bool isBrowserNode;
    bool isCameraBounds;
};

const MatchedName kMatchedNames[] = {
    {"Webtable_12", true, false, false},
    {"Webtable_0012", true, false, false},
    {"Webtable_", false, false, false},
    {"Webtable_1a", false, false, false},
    {"webtable_1", false, false, false},
    {"My Webtable_1", false, false, false},
    {"Webtable_1 ", false, false, false},
    {"Webtable_1\n", false, false, false},
    {"x\nWebtable_1", false, false, false},
    {"_brw_tv_2", false, true, false},
    {"_brw_tv", false, false, false},
    {"_brw_2", false, false, false},
    {"_brw__2", false, false, false},
    {"_brw___2", false, true, false},
    {"_brw_1_2", false, true, false},
    {"_brw_a-b_2", false, false, false},
    {"_brw_\xD1\x82_2", false, false, false},
    {"Camera-bounds", false, false, true},
    {"camera_Bounds", false, false, true},
    {"CameraBounds", false, false, true},
    {"camera bounds", false, false, true},
    {"Camera__bounds", false, false, false},
    {"CAMERA_BOUNDS", false, false, false},
    {"Camera_Bounds2", false, false, false},
    {"", false, false, false},
};

TEST(NamePatterns, GiveNamesTheirMeaning) {
    const NamePatterns patterns;
    for (const MatchedName& c : kMatchedNames) {
        EXPECT_EQ(patterns.webtablePattern.search(c.name), c.isWebtable) << '"' << c.name << '"';
        EXPECT_EQ(patterns.browserNodePattern.search(c.name), c.isBrowserNode) << '"' << c.name << '"';
        EXPECT_EQ(patterns.cameraBoundsPattern.search(c.name), c.isCameraBounds) << '"' << c.name << '"';
    }
}

TEST(NamePatterns, FindTheNumberAtTheEnd) {
    const NamePattern pattern = std::move(NamePatterns().numericSuffixPattern);
    EXPECT_EQ(pattern.find("Webtable_0012"), "_0012");
    EXPECT_EQ(pattern.find("_brw_a_1_2"), "_2");
    EXPECT_EQ(pattern.find("Chair"), std::nullopt);
    EXPECT_EQ(pattern.find("Chair_2b"), std::nullopt);
    EXPECT_EQ(pattern.find("Chair_2\n"), std::nullopt);
    EXPECT_EQ(pattern.find(""), std::nullopt);
}

TEST(NamePatterns, TakeNamesOfAMegabyte) {
    const NamePatterns patterns;
    const std::string digits(1U << 20U, '1');
    EXPECT_TRUE(patterns.webtablePattern.search("Webtable_" + digits));
    EXPECT_FALSE(patterns.webtablePattern.search("Webtable_" + digits + "x"));
    std::string groups = "_brw_";
    while (groups.size() < (1U << 20U))
        groups += "1_1";
    EXPECT_TRUE(patterns.browserNodePattern.search(groups + "_1"));
    EXPECT_FALSE(patterns.browserNodePattern.search(groups + "_1-"));
    EXPECT_EQ(patterns.numericSuffixPattern.find(groups + "_" + digits)->size(), digits.size() + 1);
    EXPECT_EQ(patterns.numericSuffixPattern.find(groups + "x"), std::nullopt);
}

TEST(NamePattern, RefusesWhatIsNoExpression) {
    EXPECT_THROW(NamePattern("(a"), std::invalid_argument);
}

}  // namespace
}  // namespace velinor
