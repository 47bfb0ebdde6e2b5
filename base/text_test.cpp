#include "base/text.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

struct Utf8Case {
    const char* name;
    std::u16string utf16;
    std::string utf8;
};

const Utf8Case kUtf8Cases[] = {
    {"empty", u"", ""},
    {"ASCII", u"Chair", "Chair"},
    {"two bytes", u"Стол", "Стол"},
    {"three bytes", u"椅子", "椅子"},
    {"pair", u"\U0001F600", "\xF0\x9F\x98\x80"},
    {"zero unit", std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
    {"lead alone at the end", {u'a', 0xD83D}, "a\xEF\xBF\xBD"},
    {"lead before a letter",
     {0xD83D, u'a'},
     "\xEF\xBF\xBD"
     "a"},
    {"trail alone",
     {0xDE00, u'a'},
     "\xEF\xBF\xBD"
     "a"},
    {"pair the wrong way round", {0xDE00, 0xD83D}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
    {"two leads and a trail", {0xD83D, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
};

TEST(ToUtf8, ConvertsEveryUnit) {
    for (const auto& c : kUtf8Cases)
        EXPECT_EQ(toUtf8(c.utf16), c.utf8) << c.name;
}

TEST(ToUtf16, RoundTripsWellFormedText) {
    for (const std::string text : {"", "Chair", "Стол", "椅子", "\xF0\x9F\x98\x80"}) {
        const auto utf16 = toUtf16(text);
        ASSERT_TRUE(utf16) << text;
        EXPECT_EQ(toUtf8(*utf16), text);
    }
}

TEST(ToUtf16, RefusesMalformedText) {
    for (const std::string text : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"}) {
        EXPECT_FALSE(toUtf16(text)) << printable(text);
    }
}

TEST(ToUtf16Lossy, ReplacesMalformedBytesAndKeepsTheRest) {
    EXPECT_EQ(toUtf16Lossy("a\xFFz"), std::u16string(u"a\xFFFDz"));
    EXPECT_EQ(toUtf16Lossy("ok"), u"ok");
}

TEST(LowBytes, KeepsTheLowByteOfEachUnit) {
    EXPECT_EQ(lowBytes(u"Ab"), "Ab");
    EXPECT_EQ(lowBytes(u"\u00E9"), "\xE9");
    EXPECT_EQ(lowBytes(u"\u0416"), "\x16");
    EXPECT_EQ(lowBytes(std::u16string{0xD83D, 0xDE00}), std::string("\x3D\0", 2));
}

TEST(Printable, ShowsControlCharactersAsEscapes) {
    EXPECT_EQ(printable("a\nb\tc\x1b[0m\x7f"), "a\\nb\\tc\\x1b[0m\\x7f");
    EXPECT_EQ(printable("Стол"), "Стол");
}

}  // namespace
}  // namespace velinor
