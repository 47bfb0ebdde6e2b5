#include "scene/node_name.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "base/text.h"

namespace velinor {
namespace {

struct ParsedName {
    const char* why;
    std::string input;
    NodeNameParts expected;
};

const ParsedName kParsedNames[] = {
    {"no list", "Chair", {"Chair", {}, {}, {}}},
    {"empty", "", {"", {}, {}, {}}},
    {"two pairs",
     "Lamp [qv_wt_res_w: 1024, qv_wt_res_h: 768]",
     {"Lamp", {"qv_wt_res_w", "qv_wt_res_h"}, {"1024", "768"}, {}}},
    {"blank in the name", "Big Screen [a: 1]", {"Big Screen", {"a"}, {"1"}, {}}},
    {"no blank after the colon", "Lamp [a:1]", {"Lamp", {}, {}, {"a:1"}}},
    {"two blanks after the colon", "Lamp [a:  1]", {"Lamp", {}, {}, {"a:  1"}}},
    {"no blank after the comma", "Lamp [a: 1,b: 2]", {"Lamp", {}, {}, {"a: 1,b: 2"}}},
    {"no blank before the bracket", "Lamp[a: 1]", {"Lamp[a: 1]", {}, {}, {}}},
    {"blank in the value", "Lamp [a: x y]", {"Lamp", {}, {}, {"a: x y"}}},
    {"only a list", "[k: v]", {"[k: v]", {}, {}, {}}},
    {"only a blank before the list", " [k: v]", {" [k: v]", {}, {}, {}}},
    {"two blanks before the list", "  [k: v]", {" ", {"k"}, {"v"}, {}}},
    {"empty list", "Lamp []", {"Lamp []", {}, {}, {}}},
    {"blank list", "Lamp [ ]", {"Lamp", {}, {}, {" "}}},
    {"only a separator", "Lamp [, ]", {"Lamp", {}, {}, {"", ""}}},
    {"separator at the end", "Lamp [a: 1, ]", {"Lamp", {"a"}, {"1"}, {""}}},
    {"separator at the start", "Lamp [, a: 1]", {"Lamp", {"a"}, {"1"}, {""}}},
    {"one bad piece among good ones", "Lamp [a: 1, b, c: 3]", {"Lamp", {"a", "c"}, {"1", "3"}, {"b"}}},
    {"three blanks between", "Lamp [a: 1,  b: 2]", {"Lamp", {"a"}, {"1"}, {" b: 2"}}},
    {"repeated key", "Lamp [a: 1, a: 2]", {"Lamp", {"a", "a"}, {"1", "2"}, {}}},
    {"colon in the key", "Lamp [a:b: c]", {"Lamp", {"a:b"}, {"c"}, {}}},
    {"colon in the value", "Lamp [a: b:c]", {"Lamp", {"a"}, {"b:c"}, {}}},
    {"comma in the key", "Lamp [a,b: c]", {"Lamp", {"a,b"}, {"c"}, {}}},
    {"bracket in the value", "Lamp [a: ]]", {"Lamp", {"a"}, {"]"}, {}}},
    {"text after the list", "Lamp [a: 1] x", {"Lamp [a: 1] x", {}, {}, {}}},
    {"two lists", "Lamp [a: 1] [b: 2]", {"Lamp [a: 1]", {"b"}, {"2"}, {}}},
    {"empty second list", "Lamp [a []", {"Lamp", {}, {}, {"a ["}}},
    {"tab in the name", "La\tmp [a: 1]", {"La\tmp [a: 1]", {}, {}, {}}},
    {"line feed in the list", "Lamp [a: 1,\nb: 2]", {"Lamp [a: 1,\nb: 2]", {}, {}, {}}},
    {"vertical tab in the name", "La\vmp [a: 1]", {"La\vmp [a: 1]", {}, {}, {}}},
    {"form feed in the list", "Lamp [a: \f]", {"Lamp [a: \f]", {}, {}, {}}},
    {"zero byte",
     std::string("La\0mp [a: \0]", 12),
     {std::string("La\0mp", 5), {"a"}, {std::string("\0", 1)}, {}}},
    {"UTF-8", "Стол [цвет: красный]", {"Стол", {"цвет"}, {"красный"}, {}}},
    {"low bytes", "\xE9\xA0\x85 [k\xA0: \x85]", {"\xE9\xA0\x85", {"k\xA0"}, {"\x85"}, {}}},
    {"panel", "Webtable_3 [qv_wt_res_w: 1024]", {"Webtable_3", {"qv_wt_res_w"}, {"1024"}, {}}},
};

TEST(NodeName, FollowsItsGrammar) {
    for (const ParsedName& c : kParsedNames)
        EXPECT_EQ(parseNodeName(c.input), c.expected) << c.why << ": " << c.input;
}

// The same by the standard library's expressions, which are good for short names.
NodeNameParts byStandardExpressions(const std::string& name) {
    static const std::regex whole(R"(^([\S ]+) \[([\S, ]+)\]$)");
    static const std::regex pair(R"(([\S]+): ([^\s,]+))");
    NodeNameParts parts{name, {}, {}, {}};
    std::smatch match;
    if (!std::regex_match(name, match, whole)) return parts;
    parts.name = match[1];
    std::string rest = match[2];
    while (true) {
        const std::size_t end = rest.find(", ");
        const std::string piece = rest.substr(0, end);
        std::smatch keyAndValue;
        if (std::regex_match(piece, keyAndValue, pair)) {
            parts.paramKeys.push_back(keyAndValue[1]);
            parts.paramValues.push_back(keyAndValue[2]);
        } else {
            parts.ignored.push_back(piece);
        }
        if (end == std::string::npos) return parts;
        rest = rest.substr(end + 2);
    }
}

TEST(NodeName, AgreesWithTheStandardLibrarysExpressionsOnRandomNames) {
    const std::string alphabet = "ab:, []\t\v\xD0";
    std::mt19937 random(11);
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    std::uniform_int_distribution<std::size_t> length(0, 24);
    for (int i = 0; i < 20000; ++i) {
        std::string name = i % 2 == 0 ? "n [" : "";
        for (std::size_t n = length(random); n > 0; --n)
            name += alphabet[letter(random)];
        if (i % 2 == 0) name += "]";
        ASSERT_EQ(parseNodeName(name), byStandardExpressions(name)) << printable(name);
    }
}

TEST(NodeName, TakesNamesOfAMegabyte) {
    const std::string letters(1U << 20U, 'x');
    EXPECT_EQ(parseNodeName(letters).name, letters);
    EXPECT_EQ(parseNodeName(letters + "]").name, letters + "]");
    EXPECT_EQ(parseNodeName(letters + " [a: 1]"), (NodeNameParts{letters, {"a"}, {"1"}, {}}));
    EXPECT_EQ(parseNodeName("n [a: " + letters + "]"), (NodeNameParts{"n", {"a"}, {letters}, {}}));
    std::string brackets;
    while (brackets.size() < (1U << 20U))
        brackets += " [";
    EXPECT_EQ(parseNodeName("n" + brackets + "]").name.size(), brackets.size() - 3);
}

TEST(NodeName, TakesAHundredThousandPairs) {
    std::string name = "n [k: v";
    for (int i = 1; i < 100000; ++i)
        name += ", k: v";
    EXPECT_EQ(parseNodeName(name + "]").paramKeys.size(), 100000U);
}

}  // namespace
}  // namespace velinor
