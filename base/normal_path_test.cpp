#include "base/normal_path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

namespace velinor {
namespace {

std::string normal(const char* path) {
    return normalPath(path).string();
}

#ifdef _WIN32
TEST(NormalPath, KeepsDrives) {
    EXPECT_EQ(normal("C:/work/./a/../scene.jsx"), "C:\\work\\scene.jsx");
    EXPECT_EQ(normal("C:\\work//scene.jsx"), "C:\\work\\scene.jsx");
}

TEST(NormalPath, KeepsServersAndShares) {
    EXPECT_EQ(normal("\\\\server\\share\\a\\..\\scene.jsx"), "\\\\server\\share\\scene.jsx");
    EXPECT_EQ(normal("//server/share/a/./scene.jsx"), "//server/share\\a\\scene.jsx");
    EXPECT_EQ(normal("\\\\server\\share\\..\\scene.jsx"), "\\\\server\\share\\scene.jsx");
    EXPECT_EQ(normal("\\\\server\\share"), "\\\\server\\share");
    EXPECT_EQ(normal("\\\\server"), "\\\\server");
}

TEST(NormalPath, KeepsPathsOfDevices) {
    EXPECT_EQ(normal("\\\\?\\C:\\a\\.\\scene.jsx"), "\\\\?\\C:\\a\\scene.jsx");
    EXPECT_EQ(normal("\\\\.\\C:\\a\\..\\scene.jsx"), "\\\\.\\C:\\scene.jsx");
    EXPECT_EQ(normal("\\\\?\\UNC\\server\\share\\..\\scene.jsx"), "\\\\?\\UNC\\server\\share\\scene.jsx");
    EXPECT_EQ(normal("\\\\?\\"), "\\\\?\\");
    EXPECT_EQ(normal("\\\\?"), "\\\\?");
}

TEST(NormalPath, JoinsSuperfluousSeparators) {
    EXPECT_EQ(normal("\\\\\\a\\b"), "\\a\\b");
    EXPECT_EQ(normal("\\a\\\\b"), "\\a\\b");
    EXPECT_EQ(normal("\\\\"), "\\");
}
#else
TEST(NormalPath, IsTheStandardLibrarys) {
    const std::pair<const char*, const char*> kPaths[] = {
        {"/work/./a/../scene.jsx", "/work/scene.jsx"},
        {"//server/share/../scene.jsx", "/server/scene.jsx"},
        {"\\\\server\\share", "\\\\server\\share"},
        {"../a", "../a"},
        {"", ""},
    };
    for (const auto& [path, expected] : kPaths)
        EXPECT_EQ(normal(path), expected);
}
#endif

}  // namespace
}  // namespace velinor
