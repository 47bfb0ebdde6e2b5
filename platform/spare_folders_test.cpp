#include "platform/spare_folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "base/text.h"
#include "platform/temporary_folder.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

TEST(ShortPath, NamesTheSameFolder) {
    const TemporaryFolder folder;
    const fs::path named = folder.path() / pathOfUtf8("\u0442\u043c\u043f");
    fs::create_directory(named);
    std::ofstream(named / "file") << "text";
    EXPECT_TRUE(fs::exists(shortPath(named) / "file")) << utf8Path(shortPath(named));
}

TEST(ShortPath, IsThePathItselfWhereThereIsNone) {
    const TemporaryFolder folder;
    EXPECT_EQ(shortPath(folder.path() / "none"), folder.path() / "none");
}

TEST(SharedTemporaryFolders, HoldOneThatCanBeWrittenTo) {
    EXPECT_TRUE(std::ranges::any_of(sharedTemporaryFolders(), [](const fs::path& folder) {
        try {
            return fs::exists(TemporaryFolder(folder).path());
        } catch (const fs::filesystem_error&) {
            return false;
        }
    }));
}

}  // namespace
}  // namespace velinor
