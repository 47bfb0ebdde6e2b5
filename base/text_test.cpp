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

TEST(Utf8OfLowBytes, UndoesLowBytesBelowU0100) {
    EXPECT_EQ(utf8OfLowBytes("T\xFCr"), "T\xC3\xBCr");
    EXPECT_EQ(utf8OfLowBytes(lowBytes(u"T\u00FCr")), toUtf8(u"T\u00FCr"));
    EXPECT_EQ(utf8OfLowBytes(""), "");
}

TEST(SanitiseName, ReplacesEachByteThatIsNoLetterDigitMinusOrPoint) {
    for (const auto& [name, expected] :
         {std::pair<std::string_view, std::string_view>{"Brick Wall #2", "Brick_Wall__2"},
          {"az-AZ.09", "az-AZ.09"},
          {"\xD0\x9A\xD1\x83\xD0\xB1", "______"},
          {"a_b/c\\d", "a_b_c_d"},
          {std::string_view("\0\x7F\xFF[`{@:", 8), "________"},
          {"", ""}}) {
        EXPECT_EQ(sanitiseName(name), expected);
        EXPECT_EQ(sanitiseName(sanitiseName(name)), expected) << "sanitising twice changes nothing";
    }
}

TEST(LastPathComponent, IsWhatFollowsTheLastSeparatorOfEitherKind) {
    for (const auto& [path, expected] :
         {std::pair<std::u16string_view, std::u16string_view>{u"D:\\maps\\Sky.dds", u"Sky.dds"},
          {u"/maps/Sky.dds", u"Sky.dds"},
          {u"a/b\\c", u"c"},
          {u"a\\b/c", u"c"},
          {u"Sky.dds", u"Sky.dds"},
          {u"D:Sky.dds", u"D:Sky.dds"},
          {u"maps/", u""},
          {u"", u""}}) {
        EXPECT_EQ(lastPathComponent(path), expected);
        EXPECT_EQ(lastPathComponent(std::string_view(lowBytes(path))), lowBytes(expected));
    }
}

TEST(Utf8Path, GoesThereAndBack) {
    for (const char* text : {"", "plain.txt", "fen\xC3\xAAtre/\xE6\x97\xA5.dds", "\xF0\x9F\x8E\xA8"}) {
        EXPECT_EQ(utf8Path(pathOfUtf8(text)), text);
        EXPECT_EQ(pathOfUtf8(text), toPath(*toUtf16(text)));
    }
}

TEST(Utf8Path, ReplacesUnpairedSurrogates) {
    EXPECT_EQ(utf8Path(toPath(u"a\xD800z\xDC00")), "a\xEF\xBF\xBDz\xEF\xBF\xBD");
}

}  // namespace
}  // namespace velinor
