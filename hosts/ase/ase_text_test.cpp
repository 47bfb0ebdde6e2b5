#include "hosts/ase/ase_text.h"

#include <gtest/gtest.h>

#include "hosts/ase/ase_test_support.h"

namespace velinor {
namespace {

std::string utf16(std::u16string_view text, bool isBigEndian, bool isMarked) {
    std::string bytes;
    const auto add = [&](char16_t unit) {
        const char low = static_cast<char>(unit & 0xFFU);
        const char high = static_cast<char>(unit >> 8U);
        bytes += isBigEndian ? high : low;
        bytes += isBigEndian ? low : high;
    };
    if (isMarked) add(0xFEFF);
    for (const char16_t unit : text)
        add(unit);
    return bytes;
}

TEST(AseText, NamesArriveInEveryEncoding) {
    const std::string file = kAseHeader + aseHelper("T\xC3\xBCr \xE2\x82\xAC");
    const std::u16string wide = *toUtf16(file);
    const std::string codePage = kAseHeader + aseHelper("T\xFCr \x80");
    for (const std::string& bytes :
         {file, "\xEF\xBB\xBF" + file, utf16(wide, false, true), utf16(wide, true, true),
          utf16(wide, false, false), utf16(wide, true, false), codePage}) {
        const ReadAse read = readAseText(bytes);
        ASSERT_EQ(read.scene.nodes.size(), 1U);
        EXPECT_EQ(read.scene.nodes[0].name, u"T\u00FCr \u20AC");
        EXPECT_EQ(read.notesOf("room.ase", "Windows-1252"), bytes == codePage ? 1 : 0);
    }
}

// One byte that is no UTF-8 tells that none of the file is.
TEST(AseText, AFileHasOneEncoding) {
    const ReadAse read = readAseText(kAseHeader + aseHelper("\xC3\xBC") + aseHelper("\xFC"));
    EXPECT_EQ(read.scene.nodes[0].name, u"\u00C3\u00BC");
    EXPECT_EQ(read.scene.nodes[1].name, u"\u00FC");
    EXPECT_EQ(readAseText("\xEF\xBB\xBF" + kAseHeader + aseHelper("\xC3\xBC\xFC")).scene.nodes[0].name,
              u"\u00FC\uFFFD")
        << "a mark is a promise";
}

TEST(AseText, TheOneByteThatTellsMayStandAnywhere) {
    for (std::size_t blanks = 0; blanks < 20; ++blanks) {
        const std::string name = std::string(blanks, ' ') + "\xFC" + std::string(20 - blanks, ' ');
        const AseText codePage(name);
        EXPECT_TRUE(codePage.isCodePage()) << blanks;
        EXPECT_EQ(codePage.decode(codePage.text())[blanks], u'\u00FC');
        EXPECT_FALSE(AseText(std::string(blanks, ' ') + "\xC3\xBC").isCodePage()) << blanks;
    }
}

TEST(AseText, PlacesAreThoseOfTheTextAndNotOfItsBytes) {
    const std::u16string text = u"*3DSMAX_ASCIIEXPORT 200\r\n*\u00FC\u00FC }";
    const std::string expected =
        "room.ase: line 2, column 5: there is no open block that this brace could close";
    EXPECT_EQ(aseRefusal(utf16(text, true, true)), expected);
    EXPECT_EQ(aseRefusal(utf16(text, false, true)), expected);
    EXPECT_EQ(aseRefusal(toUtf8(text)), expected);
}

// In a code page bytes are characters, whatever they would be in UTF-8.
TEST(AseText, PlacesAndWordsOfACodePageAreThoseOfItsCharacters) {
    EXPECT_EQ(aseRefusal(kAseHeader + "*COMMENT \"\x84\x81\xA0\" *\xFC\x80 }"),
              "room.ase: line 2, column 20: there is no open block that this brace could close");
    EXPECT_EQ(aseRefusal(kAseHeader + "*GROUP \"\x84\" { *\xFC { *GROUP \x84\x80"),
              "room.ase: line 2, column 28: the file ends within the block of *\xC3\xBC that begins at line "
              "2; it is "
              "cut off, so export it again");
    EXPECT_EQ(
        aseRefusal(kAseHeader + "*GROUP \x84\x80"),
        "room.ase: line 2, column 8: there is \"\xE2\x80\x9E\xE2\x82\xAC\" where the block of *GROUP, which "
        "begins with \"{\" is expected");
}

TEST(AseText, OddUtf16IsRefusedLikeAnyCutFile) {
    std::string bytes = utf16(*toUtf16(kAseHeader + aseHelper("A")), false, true);
    bytes.resize(bytes.size() - 5);
    EXPECT_NE(aseRefusal(bytes).find("cut off"), std::string::npos);
    EXPECT_NE(aseRefusal("\xFF\xFE"), "");
    EXPECT_NE(aseRefusal("\xEF\xBB\xBF"), "");
}

}  // namespace
}  // namespace velinor
