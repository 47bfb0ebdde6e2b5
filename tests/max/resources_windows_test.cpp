// A plug-in whose texts are missing, as in a host without them in its language.
#include <windows.h>

#include "hosts/max/max_sdk.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "hosts/max/max_values.h"
#include "platform/temporary_folder.h"
#include "tests/max/plug_in_library.h"

namespace velinor {
namespace {

constexpr WORD kLanguage = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
constexpr WORD kBlockOfTexts = 1;  // the texts 0 to 15

// Puts a block of 16 empty texts, each a length of 0, in the place of the block.
void removeTexts(const std::filesystem::path& library) {
    std::array<WORD, 16> lengths{};
    HANDLE update = BeginUpdateResourceW(library.c_str(), FALSE);
    ASSERT_NE(update, nullptr);
    EXPECT_TRUE(UpdateResourceW(update, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(kBlockOfTexts), kLanguage,
                                lengths.data(), sizeof lengths));
    ASSERT_TRUE(EndUpdateResourceW(update, FALSE));
}

TEST(PlugInTexts, AreNullWhereTheLibraryHasNone) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "tolvex.dle";
    std::filesystem::copy_file(plugInFile(), file);
    {
        const PlugInLibrary whole(file);
        EXPECT_NE(whole.description(), nullptr);
    }
    ASSERT_NO_FATAL_FAILURE(removeTexts(file));
    const PlugInLibrary plugIn(file);
    EXPECT_EQ(plugIn.description(), nullptr);
    ASSERT_NE(plugIn.classDesc(0), nullptr);
    EXPECT_EQ(plugIn.classDesc(0)->ClassName(), nullptr);
    EXPECT_EQ(plugIn.classDesc(0)->Category(), nullptr);
    EXPECT_EQ(plugIn.exporter()->Version(), 163U) << "it exports all the same";
}

}  // namespace
}  // namespace velinor
