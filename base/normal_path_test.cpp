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
    EXPECT_EQ(normal("//server/share/a/./scene.jsx"), "\\\\server\\share\\a\\scene.jsx");
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
}

TEST(AbsolutePath, IsThePathItselfWhereItIsAbsolute) {
    for (const char* path : {"C:\\a\\b", "\\\\server\\share\\a", "//server/share/a", "\\\\?\\C:\\a",
                             "\\\\?\\UNC\\server\\share\\a"}) {
        EXPECT_TRUE(isAbsolutePath(path)) << path;
        EXPECT_EQ(absolutePath(path).string(), path);
    }
}

TEST(AbsolutePath, IsMeantAgainstTheCurrentFolder) {
    const std::filesystem::path here = std::filesystem::current_path();
    for (const char* path : {"a", "\\a", "/a/b", "C:a", ""})
        EXPECT_FALSE(isAbsolutePath(path)) << path;
    EXPECT_EQ(absolutePath("a.jsx"), here / "a.jsx");
    EXPECT_EQ(absolutePath("\\a.jsx").string(), here.root_name().string() + "\\a.jsx");
}

TEST(JoinedPath, KnowsServersAndDevices) {
    struct Case {
        const char* folder;
        const char* path;
        const char* joined;
    };
    for (const auto& [folder, path, joined] :
         {Case{"Z:\\scenes", "a\\b", "Z:\\scenes\\a\\b"}, Case{"Z:\\scenes", "\\a", "Z:\\a"},
          Case{"Z:\\scenes", "C:\\a", "C:\\a"},
          Case{"Z:\\scenes", "\\\\server\\share\\a", "\\\\server\\share\\a"},
          Case{"Z:\\scenes", "//server/share/a", "//server/share/a"},
          Case{"Z:\\scenes", "\\\\?\\C:\\a", "\\\\?\\C:\\a"},
          Case{"\\\\server\\share\\scenes", "a", "\\\\server\\share\\scenes\\a"},
          Case{"\\\\server\\share\\scenes", "\\a", "\\\\server\\share\\a"},
          Case{"\\\\server\\share\\scenes", "C:\\a", "C:\\a"},
          Case{"\\\\?\\C:\\scenes", "\\a", "\\\\?\\C:\\a"}}) {
        EXPECT_EQ(joinedPath(folder, path).string(), joined) << folder << " " << path;
    }
}
#else
TEST(AbsolutePath, IsTheStandardLibrarys) {
    const std::filesystem::path here = std::filesystem::current_path();
    EXPECT_TRUE(isAbsolutePath("/a"));
    EXPECT_FALSE(isAbsolutePath("\\\\server\\share"));
    EXPECT_EQ(absolutePath("a/b"), here / "a/b");
    EXPECT_EQ(absolutePath("//a/b").string(), "//a/b");
    EXPECT_EQ(joinedPath("/scenes", "a").string(), "/scenes/a");
    EXPECT_EQ(joinedPath("//scenes", "/a").string(), "/a");
    EXPECT_EQ(joinedPath("/scenes", "\\\\server\\a").string(), "/scenes/\\\\server\\a");
}

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
