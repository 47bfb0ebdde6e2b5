#include "cli/package_replacement.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <random>
#include <string>

#include "base/text.h"
#include "cli/command_error.h"
#include "tests/support/platform_text.h"

#ifdef _WIN32
#include "platform/child_process_windows.h"
#endif

namespace velinor {
namespace {

namespace fs = std::filesystem;

class PackageReplacementTest : public testing::Test {
  protected:
    PackageReplacementTest() { fs::create_directories(folder); }
    ~PackageReplacementTest() override { fs::remove_all(folder); }

    void write(const std::string& file, const std::string& text = "old") const {
        fs::create_directories((package / file).parent_path());
        std::ofstream(package / file) << text;
    }

    void makeOldPackage() const {
        write("index.jsx");
        write("where.json");
    }

    std::size_t entryCount() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    fs::path folder =
        fs::temp_directory_path() / ("tolvex-replacement-" + std::to_string(std::random_device()()));
    fs::path package = folder / "room";
};

TEST_F(PackageReplacementTest, RemovesWhatAFailedExportWrote) {
    {
        const PackageReplacement replacement(package, false);
        write("index.jsx", "half");
    }
    EXPECT_EQ(entryCount(), 0U);
}

TEST_F(PackageReplacementTest, KeepsWhatASuccessfulExportWrote) {
    PackageReplacement replacement(package, false);
    write("index.jsx", "new");
    EXPECT_EQ(replacement.keep(), std::nullopt);
    EXPECT_TRUE(fs::exists(package / "index.jsx"));
}

TEST_F(PackageReplacementTest, NeverTouchesAFullFolderWithoutOverwrite) {
    makeOldPackage();
    { const PackageReplacement replacement(package, false); }
    EXPECT_TRUE(fs::exists(package / "index.jsx"));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(PackageReplacementTest, PutsTheOldPackageBack) {
    makeOldPackage();
    {
        const PackageReplacement replacement(package, true);
        EXPECT_FALSE(fs::exists(package));
        write("half.txt");
    }
    EXPECT_TRUE(fs::exists(package / "index.jsx"));
    EXPECT_FALSE(fs::exists(package / "half.txt"));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(PackageReplacementTest, RemovesTheOldPackageWhenTheNewOneIsComplete) {
    makeOldPackage();
    PackageReplacement replacement(package, true);
    write("new.txt");
    EXPECT_EQ(replacement.keep(), std::nullopt);
    EXPECT_TRUE(fs::exists(package / "new.txt"));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(PackageReplacementTest, RefusesAFullFolderThatIsNoPackage) {
    write("diary.txt");
    EXPECT_THROW(PackageReplacement(package, true), CommandError);
    EXPECT_TRUE(fs::exists(package / "diary.txt"));
}

TEST_F(PackageReplacementTest, PutsAFileAndAnEmptyFolderBack) {
    std::ofstream(package) << "file";
    { const PackageReplacement replacement(package, false); }
    EXPECT_TRUE(fs::is_regular_file(package));
    fs::remove(package);
    fs::create_directory(package);
    { const PackageReplacement replacement(package, true); }
    EXPECT_TRUE(fs::is_directory(package));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(PackageReplacementTest, TakesNamesOfTheGreatestLength) {
    // Windows lets a folder's path have 247 characters: 259, and room for a file name of eight and three.
    const std::size_t longest = kIsWindows ? 247 - folder.native().size() - 1 : 255;
    package = folder / std::string(longest, 'n');
    makeOldPackage();
    { const PackageReplacement replacement(package, true); }
    EXPECT_TRUE(fs::exists(package / "index.jsx"));
}

#ifdef _WIN32
TEST_F(PackageReplacementTest, TellsWhereTheOldPackageIsThatCannotBePutBack) {
    makeOldPackage();
    std::optional<PackageReplacement> replacement(std::in_place, package, true);
    write("half.txt", "half");
    const Handle held(
        CreateFileW((package / "half.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held.isOpen());
    testing::internal::CaptureStderr();
    replacement.reset();
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(told.starts_with("tolvex: " + utf8Path(package) + ": ")) << told;
    const std::string words = "; what stood there before is now ";
    const std::size_t at = told.find(words);
    ASSERT_NE(at, std::string::npos) << told;
    const fs::path aside = pathOfUtf8(told.substr(at + words.size(), told.find('\n') - at - words.size()));
    EXPECT_TRUE(fs::exists(aside / "index.jsx")) << aside;
    EXPECT_TRUE(fs::exists(aside / "where.json")) << aside;
}
#endif

}  // namespace
}  // namespace velinor
