#include "cli/jsx_reader.h"

#include <gtest/gtest.h>

#include <string>

namespace velinor {
namespace {

// The elements as "depth name(key=value)".
std::string elementsOf(std::string_view text) {
    std::string result;
    const JsxFault fault = readJsx(text, [&](const JsxElement& element) {
        result += std::to_string(element.depth) + " " + std::string(element.name);
        for (const auto& [key, value] : element.attributes) {
            result += " " + std::string(key) + std::string(value);
        }
        result += "\n";
    });
    if (fault.text.empty()) return result;
    return result + "line " + std::to_string(fault.line) + ": " + fault.text;
}

struct JsxCase {
    const char* name;
    std::string text;
    std::string result;
};

const JsxCase kCases[] = {
    {"empty scene", "<root>\n</root>\n\n", "0 root\n"},
    {"CR LF", "<root>\r\n</root>\r\n\r\n", "0 root\n"},
    {"attributes", "<root>\n\t<node\n\t\ta=\"1\"\n\t\tb={{ x: 1 }}>\n\t</node>\n</root>\n\n",
     "0 root\n1 node a=\"1\" b={{ x: 1 }}\n"},
    {"spread", "<root\n\t{...{ url: 'a' }}\n\tb=\"\">\n</root>\n", "0 root ...url: 'a' b=\"\"\n"},
    {"line end in a name", "<root\n\t{...{ url: 'a\nb' }}>\n</root>\n", "0 root ...url: 'a\nb'\n"},
    {"values that look like ends", "<root\n\ta=\">\"\n\tb=\">\">\n</root>\n", "0 root a=\">\" b=\">\"\n"},
    {"keys in the order of key and =", "<root\n\ta-b=\"1\"\n\ta=\"2\">\n</root>\n",
     "0 root a-b=\"1\" a=\"2\"\n"},
    {"nothing", "", "line 0: there is no element"},
    {"not closed", "<root>\n", "0 root\nline 1: the element \"root\" is not closed"},
    {"cut in an attribute", "<root\n", "line 1: the file ends inside an element"},
    {"wrong end", "<root>\n</rot>\n", "0 root\nline 2: \"rot\" ends where \"root\" is open"},
    {"second root", "<root>\n</root>\n<root>\n</root>\n",
     "0 root\nline 3: there is a second element beside the root"},
    {"wrong depth", "<root>\n<node>\n</node>\n</root>\n",
     "0 root\nline 2: the line is not indented by 1 tabs"},
    {"end first", "</root>\n", "line 1: an end without a start"},
    {"text", "<root>\n\ttext\n</root>\n", "0 root\nline 2: an element was expected"},
    {"self-closing", "<root>\n\t<node/>\n</root>\n", "0 root\nline 2: \"node/\" is no element name"},
    {"unordered", "<root\n\tb=\"1\"\n\ta=\"2\">\n</root>\n",
     "line 3: the attribute \"a=\" is repeated or out of order"},
    {"repeated", "<root\n\ta=\"1\"\n\ta=\"2\">\n</root>\n",
     "line 3: the attribute \"a=\" is repeated or out of order"},
    {"no quotes", "<root\n\ta=1>\n</root>\n", "line 2: \"a=1>\" is no attribute"},
    {"no key", "<root\n\t=\"1\">\n</root>\n", "line 2: \"=\"1\">\" is no attribute"},
};

TEST(ReadJsx, GivesElementsOrTheFirstFault) {
    for (const auto& c : kCases)
        EXPECT_EQ(elementsOf(c.text), c.result) << c.name;
}

TEST(ReadJsx, TakesAnyDepth) {
    constexpr std::size_t kDepth = 2000;
    std::string text = "<root>\n";
    for (std::size_t i = 1; i < kDepth; ++i)
        text += std::string(i, '\t') + "<node>\n";
    for (std::size_t i = kDepth - 1; i > 0; --i)
        text += std::string(i, '\t') + "</node>\n";
    std::size_t deepest = 0;
    const JsxFault fault = readJsx(text + "</root>\n", [&](const JsxElement& e) { deepest = e.depth; });
    EXPECT_EQ(fault.text, "");
    EXPECT_EQ(deepest, kDepth - 1);
}

}  // namespace
}  // namespace velinor
