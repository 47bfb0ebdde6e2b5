#include "hosts/import/import_text.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

TEST(ImportText, IsUtf8WhereThatIsWellFormedAndOtherwiseWindows1252) {
    EXPECT_EQ(hostText("gr\xC3\xBC"), u"gr\u00FC");
    EXPECT_EQ(hostText("gr\xFC"), u"gr\u00FC");
    EXPECT_EQ(hostText("\x80\x9F\x81"), u"\u20AC\u0178\u0081");
    EXPECT_EQ(fromWindows1252("\xC3\xBC"), u"\u00C3\u00BC");
}

TEST(ImportText, OneLineHasNoRunsOfBlanksAndNoControlCharacters) {
    EXPECT_EQ(oneLine(" a\r\n\tb \x01 "), "a b \\x01");
    EXPECT_EQ(oneLine(" \n"), "");
}

TEST(ImportText, IsTrimmedAtBothEnds) {
    EXPECT_EQ(trimmed(" \ta b\r\n"), "a b");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" \n"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(ImportText, CaseCountsForLettersBeyondAsciiAlone) {
    EXPECT_EQ(lowerCase("aZ\xC3\x84"), "az\xC3\x84");
    EXPECT_TRUE(isSameButCase("Room.ASE", "rOOM.ase"));
    EXPECT_FALSE(isSameButCase("room.ase", "room.as"));
}

}  // namespace
}  // namespace velinor
