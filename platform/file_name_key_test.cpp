#include "platform/file_name_key.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace velinor {
namespace {

std::filesystem::path::string_type keyOf(const char* utf8) {
    return fileNameKey(pathOfUtf8(utf8));
}

TEST(FileNameKey, IsEqualForEqualNamesAlone) {
    EXPECT_EQ(keyOf("folder/Oak.material"), keyOf("folder/Oak.material"));
    EXPECT_NE(keyOf("folder/Oak.material"), keyOf("folder/Oak_.material"));
    EXPECT_EQ(keyOf(""), std::filesystem::path::string_type());
}

#ifdef _WIN32
TEST(FileNameKey, KnowsThatWindowsTakesNoHeedOfCase) {
    EXPECT_EQ(keyOf("folder/oak.Material"), keyOf("FOLDER\\Oak.material"));
    EXPECT_EQ(keyOf("fen\xC3\xAAtre \xD0\x96"), keyOf("FEN\xC3\x8ATRE \xD0\xB6"));
}
#else
TEST(FileNameKey, KnowsThatCaseCounts) {
    EXPECT_NE(keyOf("oak"), keyOf("Oak"));
    EXPECT_NE(keyOf("a\\b"), keyOf("a/b"));
}
#endif

}  // namespace
}  // namespace velinor
