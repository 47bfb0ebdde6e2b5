#include "platform/path_text.h"

#include <gtest/gtest.h>

#include <fstream>

#include "base/text.h"
#include "platform/temporary_folder.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

const fs::path kAscii = pathOfUtf8("folder/name.dds");
const fs::path kLatin = pathOfUtf8("fen\xC3\xAAtre");
const fs::path kJapanese = pathOfUtf8("\xE6\x97\xA5\xE6\x9C\xAC.dds");

TEST(NarrowPath, KeepsAscii) {
    EXPECT_EQ(narrowPath(kAscii), "folder/name.dds");
    EXPECT_EQ(pathOfNarrow("folder/name.dds"), kAscii);
    EXPECT_TRUE(hasNarrowForm(kAscii));
    EXPECT_EQ(narrowPath({}), "");
    EXPECT_EQ(pathOfNarrow(""), fs::path());
}

#ifdef _WIN32
// The tests run in the western European code page, 1252.
TEST(NarrowPath, IsInTheCodePageOfFileNames) {
    EXPECT_EQ(narrowPath(kLatin), "fen\xEAtre");
    EXPECT_EQ(pathOfNarrow("fen\xEAtre"), kLatin);
    EXPECT_TRUE(hasNarrowForm(kLatin));
}

TEST(NarrowPath, HasTheDefaultCharacterForWhatTheCodePageLacks) {
    EXPECT_EQ(narrowPath(kJapanese), "??.dds");
    EXPECT_FALSE(hasNarrowForm(kJapanese));
    EXPECT_EQ(asNarrowFile(kJapanese).native(), L"??.dds");
}

TEST(NarrowPath, TakesUnpairedSurrogates) {
    const fs::path broken = toPath(u"a\xD800z");
    EXPECT_EQ(broken.native().size(), 3U);
    EXPECT_FALSE(hasNarrowForm(broken));
    EXPECT_EQ(utf8Path(broken), "a\xEF\xBF\xBDz");
}
#else
TEST(NarrowPath, KeepsBytesAsTheyAre) {
    for (const fs::path& path : {kLatin, kJapanese, fs::path("not UTF-8: \xFF")}) {
        EXPECT_EQ(narrowPath(path), path.native());
        EXPECT_EQ(pathOfNarrow(path.native()), path);
        EXPECT_TRUE(hasNarrowForm(path));
    }
}
#endif

TEST(NarrowPath, NamesTheSameFileToNarrowFunctions) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / kLatin;
    std::ofstream(file) << "text";
    std::string text;
    std::ifstream(narrowPath(file).c_str()) >> text;
    EXPECT_EQ(text, "text");
    EXPECT_TRUE(fs::exists(asNarrowFile(file)));
}

TEST(FileNameOf, IsWhatFollowsTheLastSeparatorOfEitherKind) {
    for (const auto& [path, expected] :
         {std::pair{"a/b\\c.dds", "c.dds"}, std::pair{"a\\b/c.dds", "c.dds"}, std::pair{"c.dds", "c.dds"},
          std::pair{"a/", ""}, std::pair{"", ""}}) {
        EXPECT_EQ(fileNameOf(path), fs::path(expected)) << path;
        EXPECT_EQ(narrowFileName(path), expected) << path;
    }
}

}  // namespace
}  // namespace velinor
