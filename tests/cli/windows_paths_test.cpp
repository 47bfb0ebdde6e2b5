// The command on paths as Windows has them.
#include <gmock/gmock.h>

#include <algorithm>

#include "platform/copy_file_over.h"
#include "platform/path_text.h"
#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\ng T\nf 1 2 3\n";

// With the bitmap wood.png beside it.
constexpr const char* kTexturedTriangle =
    R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"T","mesh":0}],)"
    R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],)"
    R"("buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
    R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],)"
    R"("bufferViews":[{"buffer":0,"byteLength":36}],)"
    R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],)"
    R"("max":[1,1,0]}],"materials":[{"name":"M","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}],)"
    R"("textures":[{"source":0}],"images":[{"uri":"wood.png"}]})";

class WindowsPaths : public CommandTest {
  protected:
    // A whole package.
    static void expectPackage(const fs::path& package) {
        for (const char* file : {"index.jsx", "where.json", "webtables.json", "resources/default.dds"})
            EXPECT_TRUE(fs::exists(package / file)) << package << " " << file;
    }
};

// The folder of the scenes as a share of a server: under Wine one made for it, elsewhere that of the whole
// drive, which not everyone may use.
class ServerPaths : public WindowsPaths {
  protected:
    ServerPaths() {
        const wchar_t* wine = _wgetenv(L"WINECONFIGDIR");
        if (wine == nullptr) {
            share_ = "\\\\localhost\\C$\\" + utf8Path(folder().relative_path());
            return;
        }
        const std::wstring prefix = wine;  // "\??\Z:\..."
        server_ = fs::path(prefix.substr(prefix.find(L':') - 1)) / "dosdevices" / "unc" / folder().filename();
        fs::create_directories(server_ / "share");
        share_ = "\\\\" + utf8Path(folder().filename()) + "\\share";
    }
    ~ServerPaths() override {
        std::error_code ignored;
        if (!server_.empty()) fs::remove_all(server_, ignored);
    }

    void SetUp() override {
        ASSERT_TRUE(fs::exists(share_)) << share_;
        std::ofstream(fs::path(share_ + "\\a.gltf")) << kTexturedTriangle;
        std::ofstream(fs::path(share_ + "\\wood.png")) << "image";
    }

    std::string share_;

  private:
    fs::path server_;
};

// The command and what belongs to it, in a folder of its own.
class InstalledCommand : public WindowsPaths {
  protected:
    explicit InstalledCommand(const fs::path& name = "bin") : bin_(parent_.path() / name) {
        const fs::path built = fs::path(TOLVEX_PROGRAM).parent_path();
        fs::create_directories(bin_ / "Plugins/tolvex/ogrexmltools");
        fs::create_directory(bin_ / "Plugins/tolvex/res");
        for (const char* file : {"tolvex.exe", "libvips-42.dll", "Plugins/tolvex/res/default.dds"})
            copyFileOver(built / file, bin_ / file);
    }

    void installTools() const {
        const fs::path tools = "Plugins/tolvex/ogrexmltools";
        for (const char* file : {"OgreXMLConverter.exe", "meshprocessor.exe"})
            copyFileOver(fs::path(TOLVEX_PROGRAM).parent_path() / tools / file, bin_ / tools / file);
    }

    CommandResult runInstalled(const std::vector<std::string>& arguments) const {
        CommandInput input;
        input.folder = folder();
        return runProgram(bin_ / "tolvex.exe", arguments, input);
    }

  private:
    TemporaryFolder parent_;
    fs::path bin_;
};

class InstalledOutsideTheCodePage : public InstalledCommand {
  protected:
    // No single-byte code page has both.
    InstalledOutsideTheCodePage() : InstalledCommand(pathOfUtf8("\u0431\u0438\u043d \u65e5")) {}
};

TEST_F(WindowsPaths, TakesPathsThatTheSystemTakesAsTheyAre) {
    const std::string target = "\\\\?\\" + utf8Path(folder() / "room.jsx");
    const CommandResult result = run({"export", "--quiet", "room.scene.json", target});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "\\\\?\\" + utf8Path(folder() / "room") + "\n");
    expectPackage(folder() / "room");
}

TEST_F(WindowsPaths, KeepTheSceneThatIsInThePackageToReplace) {
    makeOldPackage();
    write("room/inner.scene.json", kRoom);
    const std::string inner = utf8Path(folder() / "room" / "inner.scene.json");
    const std::string mark = "\\\\?\\";
    EXPECT_EQ(run({"export", "--overwrite", mark + inner, "room.jsx"}).status, 2);
    EXPECT_EQ(run({"export", "--overwrite", inner, mark + utf8Path(folder() / "room.jsx")}).status, 2);
    EXPECT_TRUE(fs::exists(folder() / "room/inner.scene.json"));
}

// Folders with a longer path than most operations take, which tests have to remove one by one.
class DeepFolder {
  public:
    explicit DeepFolder(const fs::path& parent) : path_("\\\\?\\" + utf8Path(parent)) {
        while (path_.native().size() < 300) {
            path_ /= std::string(60, 'd');
            fs::create_directory(path_);
            ++levels_;
        }
    }
    DeepFolder(const DeepFolder&) = delete;
    DeepFolder& operator=(const DeepFolder&) = delete;
    ~DeepFolder() {
        std::error_code ignored;
        for (fs::path folder = path_; levels_ > 0; folder = folder.parent_path(), --levels_)
            fs::remove(folder, ignored);
    }

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
    int levels_ = 0;
};

TEST_F(WindowsPaths, TakesScenesInDeepFoldersWithoutTheirBitmaps) {
    const DeepFolder deep(folder());
    const fs::path scene = deep.path() / "a.gltf";
    std::ofstream(scene) << kTexturedTriangle;
    const CommandResult result = run({"export", utf8Path(scene), "a.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("wood.png"));
    expectPackage(folder() / "a");
    fs::remove(scene);
}

TEST_F(ServerPaths, HoldScenesTexturesAndPackages) {
    const CommandResult result = run({"export", "--quiet", share_ + "\\a.gltf", share_ + "\\room.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, share_ + "\\room\n");
    expectPackage(share_ + "\\room");
    EXPECT_TRUE(fs::exists(share_ + "\\room\\resources\\wood.png"));
}

TEST_F(ServerPaths, KeepTheSceneThatIsInThePackageToReplace) {
    EXPECT_EQ(run({"export", share_ + "\\a.gltf", share_ + "\\room.jsx"}).status, 0);
    const std::string inner = share_ + "\\room\\inner.scene.json";
    std::ofstream(fs::path(inner)) << kRoom;
    EXPECT_EQ(run({"export", "--overwrite", inner, share_ + "\\room.jsx"}).status, 2);
    EXPECT_EQ(run({"export", "--overwrite", "\\\\?\\unc" + inner.substr(1), share_ + "\\room.jsx"}).status,
              2);
    EXPECT_TRUE(fs::exists(inner));
    EXPECT_EQ(run({"export", "--overwrite", "room.scene.json", share_ + "\\room.jsx"}).status, 0);
    EXPECT_FALSE(fs::exists(inner));
}

TEST_F(WindowsPaths, RefusesLongPathsBeforeAnythingIsWritten) {
    const std::string plain = utf8Path(folder() / (std::string(240, 'n') + ".jsx"));
    for (const std::string& target : {plain, "\\\\?\\" + plain, plain.substr(0, plain.size() - 10)}) {
        const CommandResult result = run({"export", "room.scene.json", target});
        EXPECT_EQ(result.status, 2) << result.err;
        EXPECT_THAT(result.err,
                    HasSubstr(" characters, and Windows takes 221 for a package; choose another TARGET"));
        EXPECT_EQ(entryCount(), 1U) << "the scene";
    }
}

TEST_F(WindowsPaths, TakesPackagesOfTheGreatestLength) {
    const fs::path package = folder() / std::string(221 - folder().native().size() - 1, 'n');
    const CommandResult result = run({"export", "room.scene.json", utf8Path(package) + ".jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    expectPackage(package);
}

TEST_F(WindowsPaths, ConvertsMeshesInFoldersWithBlanksAndLettersOfTheCodePage) {
    write("tri.obj", kTriangle);
    const fs::path target = folder() / pathOfUtf8("a b \u00e9");
    fs::create_directory(target);
    const CommandResult result =
        run({"export", "tri.obj", utf8Path(target / pathOfUtf8("my r\u00f4om.jsx"))});
    EXPECT_EQ(result.status, 0) << result.err;
    const fs::path package = target / pathOfUtf8("my r\u00f4om");
    expectPackage(package);
    const Tree resources = readTree(package / "resources");
    EXPECT_TRUE(std::ranges::any_of(resources, [](const auto& file) {
        return file.first.ends_with(".mesh");
    })) << result.out;
    EXPECT_TRUE(std::ranges::any_of(resources, [](const auto& file) {
        return file.first.ends_with("_phy.obj");
    })) << result.out;
    EXPECT_FALSE(resources.contains("failed_mesh.txt"));
}

TEST_F(WindowsPaths, RefusesTargetsOutsideTheCodePage) {
    const std::string name = "\u65e5\u0416\u00e9";
    ASSERT_FALSE(hasNarrowForm(pathOfUtf8(name))) << "to be run in another code page";
    const CommandResult result = run({"export", "room.scene.json", name + ".jsx"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(lastLine(result.err), HasSubstr(name + ": the path has letters that the system's code page"));
    EXPECT_EQ(entryCount(), 1U) << "the scene";
}

TEST_F(WindowsPaths, RefusesNamesThatTheSystemWouldShorten) {
    for (const char* target : {"name .jsx", "name...jsx", "name. .jsx"}) {
        const CommandResult result = run({"export", "room.scene.json", target});
        EXPECT_EQ(result.status, 2) << target;
        EXPECT_THAT(result.err, HasSubstr("Windows drops blanks and dots at the end of a folder's name"));
        EXPECT_EQ(entryCount(), 1U) << "the scene";
    }
}

TEST_F(InstalledCommand, NotesMeshesThatMissTheirTools) {
    write("tri.obj", kTriangle);
    const CommandResult result = runInstalled({"export", "--json", "tri.obj", "tri.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("\"tool-missing\""));
    const Tree resources = readTree(folder() / "tri/resources");
    for (const char* log : {"failed_mesh.txt", "failed_physics.txt"}) {
        ASSERT_TRUE(resources.contains(log));
        // Eight bytes, in which a line feed has become two.
        EXPECT_EQ(resources.at(log), asTextFile(std::string("T\n\0\0\0\0\0\0", 8)));
    }
}

TEST_F(InstalledOutsideTheCodePage, TellsThatToolsCannotBeStartedFromThere) {
    installTools();
    const CommandResult result = runInstalled({"export", "--json", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    if (hasNarrowForm(pathOfUtf8("\u0431\u65e5"))) {
        EXPECT_EQ(result.out.find("tool-path-not-narrow"), std::string::npos) << result.out;
    } else {
        EXPECT_THAT(result.out, HasSubstr("\"tool-path-not-narrow\""));
    }
    EXPECT_EQ(result.out.find("tool-missing"), std::string::npos) << result.out;
}

TEST_F(WindowsPaths, FindsTexturesOfScenesWithSuchPaths) {
    write("wood.png", "image");
    write("a.gltf", kTexturedTriangle);
    const fs::path elsewhere = folder() / "elsewhere";
    fs::create_directory(elsewhere);
    CommandInput input;
    input.folder = elsewhere;
    const std::string mark = "\\\\?\\";
    EXPECT_EQ(runTolvex({"snapshot", mark + utf8Path(folder() / "a.gltf"),
                         mark + utf8Path(folder() / "a.scene.json")},
                        input)
                  .status,
              0);
    const CommandResult result =
        runTolvex({"export", mark + utf8Path(folder() / "a.scene.json"), "a.jsx"}, input);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(fs::exists(elsewhere / "a/resources/wood.png")) << result.out;
}

}  // namespace
}  // namespace velinor
