#include "platform/copy_file_over.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "base/text.h"
#include "platform/temporary_folder.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::string firstLineOf(const fs::path& file) {
    std::string text;
    std::getline(std::ifstream(file), text);
    return text;
}

TEST(CopyFileOver, MakesAFileAndReplacesOne) {
    const TemporaryFolder folder;
    const fs::path to = folder.path() / pathOfUtf8("\xE6\x97\xA5.txt");
    for (const char* text : {"one, the longer text", "two"}) {
        std::ofstream(folder.path() / "from") << text;
        copyFileOver(folder.path() / "from", to);
        EXPECT_EQ(firstLineOf(to), text);
    }
}

TEST(CopyFileOver, NamesOperationAndBothFilesWhereItFails) {
    const TemporaryFolder folder;
    const fs::path from = folder.path() / "missing";
    const fs::path to = folder.path() / "to";
    try {
        copyFileOver(from, to);
        FAIL() << "no exception";
    } catch (const fs::filesystem_error& error) {
        EXPECT_EQ(error.path1(), from);
        EXPECT_EQ(error.path2(), to);
        EXPECT_NE(std::string(error.what()).find("copy"), std::string::npos);
        EXPECT_TRUE(error.code() == std::errc::no_such_file_or_directory) << error.code();
    }
    EXPECT_FALSE(fs::exists(to));
}

}  // namespace
}  // namespace velinor
