#include "platform/code_page.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

namespace velinor {
namespace {

// The code page that the expectations are about: the tests also run in others.
bool isUtf8() {
#ifdef _WIN32
    return GetACP() == CP_UTF8;
#else
    return true;
#endif
}

TEST(CodePage, KeepsAsciiInEveryCodePage) {
    const std::u16string text = u"C:\\maps\\sky 1.dds\t~";
    EXPECT_EQ(narrowText(text), "C:\\maps\\sky 1.dds\t~");
    EXPECT_EQ(wideText(narrowText(text)), text);
    EXPECT_EQ(narrowText(u""), "");
    EXPECT_EQ(wideText(""), u"");
}

TEST(CodePage, KeepsACharacterZeroInside) {
    const std::u16string text{u'a', u'\0', u'b'};
    EXPECT_EQ(narrowText(text), std::string("a\0b", 3));
    EXPECT_EQ(wideText(std::string("a\0b", 3)), text);
}

TEST(CodePage, LosesWhatTheCodePageCannotExpress) {
    const std::u16string text = u"\u4e2d\u0436.dds";  // no single-byte code page holds both
    const std::u16string back = wideText(narrowText(text));
    if (isUtf8()) {
        EXPECT_EQ(narrowText(text), "\u4e2d\u0436.dds");
        EXPECT_EQ(back, text);
    } else {
        EXPECT_NE(back, text);
    }
    EXPECT_TRUE(back.ends_with(u".dds"));
}

#ifdef _WIN32
TEST(CodePage, IsTheAnsiOneOfTheProcess) {
    if (GetACP() != 1252) {
        EXPECT_NE(narrowText(u"\u00e9"), "") << "code page " << GetACP();
        return;
    }
    EXPECT_EQ(narrowText(u"\u00e9\u20ac"), "\xE9\x80");
    EXPECT_EQ(wideText("\xE9\x80"), u"\u00e9\u20ac");
    EXPECT_EQ(narrowText(u"\u043d\u0435\u0431\u043e"), "????");
}
#else
TEST(CodePage, IsUtf8OffWindows) {
    EXPECT_EQ(narrowText(u"\u00e9\U0001F600"), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(wideText("\xC3\xA9\xF0\x9F\x98\x80"), u"\u00e9\U0001F600");
    EXPECT_EQ(narrowText(u"\xD800"), "\xEF\xBF\xBD");
    EXPECT_EQ(wideText("\xE9"), u"\uFFFD");
}
#endif

}  // namespace
}  // namespace velinor
