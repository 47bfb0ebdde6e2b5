#include "plugin/package_folders.h"

#include <gtest/gtest.h>

#include <fstream>

#include "base/text.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

class PackageFoldersTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  (std::string("tolvex_") + testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder_);
        fs::create_directory(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    PackageFolders folders() const { return packageFoldersFor(folder_ / "scene.jsx", "/host/bin/host"); }

    // The operation word and the path of the error that `action` ends with.
    template <class Action>
    static std::pair<std::string, fs::path> errorOf(Action action) {
        try {
            action();
        } catch (const fs::filesystem_error& error) {
            const std::string text = error.what();
            const std::string prefix = "filesystem error: ";
            const std::size_t start = text.find(prefix) == 0 ? prefix.size() : 0;
            // libstdc++ puts the system's words behind the operation's, after a colon and a blank.
            return {text.substr(start, text.find(": ", start) - start), error.path1()};
        }
        return {"no error", {}};
    }

    fs::path folder_;
};

void touch(const fs::path& path) {
    std::ofstream(path) << "x";
}

TEST(PackageFoldersFor, NamesThePackageAfterTheFile) {
    struct Case {
        const char* fileName;
        const char* exportFolder;
    };
    for (const auto& [fileName, exportFolder] : {
             Case{"/scenes/scene.jsx", "/scenes/scene"},
             Case{"/scenes/archive.old.jsx", "/scenes/archive.old"},
             Case{"/scenes/noending", "/scenes/noending"},
             Case{"/scenes/.hidden", "/scenes/.hidden"},
             Case{"/scenes/.hidden.jsx", "/scenes/.hidden"},
             Case{"/scenes/scene.", "/scenes/scene"},
             Case{"/scenes//a/./b/../scene.jsx", "/scenes/a/scene"},
             Case{"/scenes/my scene.v2.JSX", "/scenes/my scene.v2"},
             Case{"/scene.jsx", "//scene"},
         }) {
        const PackageFolders folders = packageFoldersFor(fileName, "/opt/host/host.exe");
        const std::string folder = asPathText(exportFolder);
        const std::string below = folder + asPathText("/");
        EXPECT_EQ(utf8Path(folders.exportFolder), folder) << fileName;
        EXPECT_EQ(utf8Path(folders.miscFolder), below + "misc");
        EXPECT_EQ(utf8Path(folders.resourcesFolder), below + "resources");
        EXPECT_EQ(utf8Path(folders.thumbsFolder), below + "thumbs");
    }
}

TEST(PackageFoldersFor, FindsThePluginFolderBesideTheHost) {
    const PackageFolders folders = packageFoldersFor("/scenes/scene.jsx", "/opt/host/host.exe");
    EXPECT_EQ(folders.hostFolder, "/opt/host");
    EXPECT_EQ(folders.pluginFolder, "/opt/host/Plugins");
}

TEST_F(PackageFoldersTest, AreAllCreated) {
    createPackageFolders(folders());
    for (const char* name : {"scene", "scene/misc", "scene/resources", "scene/thumbs"}) {
        EXPECT_TRUE(fs::is_directory(folder_ / name)) << name;
    }
}

TEST_F(PackageFoldersTest, ReplaceAFileAndAnEmptyFolderOfTheirName) {
    touch(folder_ / "scene");
    createPackageFolders(folders());
    EXPECT_TRUE(fs::is_directory(folder_ / "scene/misc"));

    fs::remove_all(folder_ / "scene");
    fs::create_directory(folder_ / "scene");
    createPackageFolders(folders());
    EXPECT_TRUE(fs::is_directory(folder_ / "scene/thumbs"));
}

TEST_F(PackageFoldersTest, LeaveAFullFolderAlone) {
    createPackageFolders(folders());
    const auto [operation, path] = errorOf([&] { createPackageFolders(folders()); });
    EXPECT_EQ(operation, "remove");
    EXPECT_EQ(path, folder_ / "scene");
    EXPECT_TRUE(fs::is_directory(folder_ / "scene/misc"));
}

TEST_F(PackageFoldersTest, TellWhichFolderCannotBeCreated) {
    const PackageFolders missingParent = packageFoldersFor(folder_ / "missing" / "scene.jsx", "/host/host");
    auto [operation, path] = errorOf([&] { createPackageFolders(missingParent); });
    EXPECT_EQ(operation, "create_directory");
    EXPECT_EQ(path, folder_ / "missing" / "scene");

    touch(folder_ / "file");
    const PackageFolders belowAFile = packageFoldersFor(folder_ / "file" / "scene.jsx", "/host/host");
    std::tie(operation, path) = errorOf([&] { createPackageFolders(belowAFile); });
    EXPECT_EQ(operation, "create_directory");

    const PackageFolders tooLong =
        packageFoldersFor(folder_ / (std::string(300, 'n') + ".jsx"), "/host/host");
    std::tie(operation, path) = errorOf([&] { createPackageFolders(tooLong); });
    EXPECT_EQ(operation, "create_directory");
}

#ifndef _WIN32  // where not everybody may make links
TEST_F(PackageFoldersTest, TellThatALinkToNowhereIsInTheWay) {
    fs::create_symlink(folder_ / "nowhere", folder_ / "scene");
    const auto [operation, path] = errorOf([&] { createPackageFolders(folders()); });
    EXPECT_EQ(operation, "create_directory");
    EXPECT_EQ(path, folder_ / "scene");
}
#endif

TEST_F(PackageFoldersTest, AreCleanedOfIntermediateMeshesOnly) {
    for (const char* name : {"a.mesh.xml", "b.mesh.xml.bak", "a.mesh", "a.mesh_phy.obj", "a.material"}) {
        touch(folder_ / name);
    }
    fs::create_directory(folder_ / "empty.mesh.xml");
    fs::create_directory(folder_ / "sub");
    touch(folder_ / "sub" / "c.mesh.xml");
    removeIntermediateMeshes(folder_);
    for (const char* gone : {"a.mesh.xml", "b.mesh.xml.bak", "empty.mesh.xml"}) {
        EXPECT_FALSE(fs::exists(folder_ / gone)) << gone;
    }
    for (const char* kept : {"a.mesh", "a.mesh_phy.obj", "a.material", "sub/c.mesh.xml"}) {
        EXPECT_TRUE(fs::exists(folder_ / kept)) << kept;
    }
}

TEST_F(PackageFoldersTest, LoseEverythingWhereTheirOwnPathLooksLikeAnIntermediateMesh) {
    const fs::path resources = folder_ / "x.mesh.xml";
    fs::create_directory(resources);
    touch(resources / "a.material");
    removeIntermediateMeshes(resources);
    EXPECT_TRUE(fs::is_empty(resources));
}

TEST_F(PackageFoldersTest, TellWhatCannotBeCleaned) {
    auto [operation, path] = errorOf([&] { removeIntermediateMeshes(folder_ / "missing"); });
    EXPECT_EQ(operation, "directory_iterator::directory_iterator");
    EXPECT_EQ(path, folder_ / "missing");

    fs::create_directories(folder_ / "full.mesh.xml" / "sub");
    std::tie(operation, path) = errorOf([&] { removeIntermediateMeshes(folder_); });
    EXPECT_EQ(operation, "remove");
    EXPECT_EQ(path, folder_ / "full.mesh.xml");
}

TEST(ExportFolderFault, TellsWhatWindowsCannotHold) {
    const fs::path work = fs::path("C:/work").make_preferred();
    EXPECT_EQ(exportFolderFault(work / "room"), std::nullopt);
    EXPECT_EQ(exportFolderFault(work / std::string(221 - 8, 'n')), std::nullopt);
    EXPECT_EQ(exportFolderFault(work / "room. x"), std::nullopt);
    for (const std::string& name : {std::string("room "), std::string("room."), std::string(222 - 8, 'n')})
        EXPECT_EQ(exportFolderFault(work / name).has_value(), kIsWindows) << name;
}

}  // namespace
}  // namespace velinor
