#include "platform/text_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/platform_text.h"

namespace velinor {
namespace {

std::filesystem::path freshFile(const char* name) {
    const auto path = std::filesystem::temp_directory_path() / (std::string("tolvex_text_file_test_") + name);
    std::filesystem::remove_all(path);
    return path;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

TEST(TextFile, HoldsWhatWasWrittenInOrder) {
    const auto path = freshFile("order");
    TextFile file(path);
    file.write("a\n");
    file.write("");
    file.write("b\n");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(file.error(), "");
    EXPECT_EQ(file.bytesWritten(), std::filesystem::file_size(path));
    EXPECT_EQ(contentOf(path), "a\nb\n");
}

TEST(TextFile, EndsLinesAsTheSystemDoes) {
    const auto path = freshFile("lines");
    TextFile file(path);
    file.write("a\n\nb");
    EXPECT_TRUE(file.close());
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    EXPECT_EQ(bytes.str(), asTextFile("a\n\nb"));
    EXPECT_EQ(file.bytesWritten(), bytes.str().size());
}

TEST(TextFile, ReplacesAnExistingFile) {
    const auto path = freshFile("replace");
    std::ofstream(path) << "a longer text than the new one";
    TextFile file(path);
    file.write("new");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(contentOf(path), "new");
}

TEST(TextFile, AppendsWhereAsked) {
    const auto path = freshFile("appended");
    for (const char* text : {"one\n", "two"}) {
        TextFile file(path, TextFile::Mode::append);
        file.write(text);
        EXPECT_TRUE(file.close());
    }
    EXPECT_EQ(contentOf(path), "one\ntwo");
}

TEST(TextFile, TellsWhyItCannotBeOpened) {
    TextFile file(freshFile("missing_folder") / "file");
    file.write("text");
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.error(), "No such file or directory");
}

#ifdef __linux__
TEST(TextFile, TellsThatTheDiskIsFull) {
    TextFile file("/dev/full");
    file.write(std::string(100000, 'x'));
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.error(), "No space left on device");
}

TEST(TextFile, TellsThatTheDiskIsFullWhenTheLastBytesAreWrittenOut) {
    TextFile file("/dev/full");
    file.write("x");
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.error(), "No space left on device");
}
#endif

}  // namespace
}  // namespace velinor
