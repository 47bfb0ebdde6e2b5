#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

class ExportTest : public CommandTest {
  protected:
    Tree package(const std::string& name = "room") const { return readTree(folder() / name); }
};

TEST_F(ExportTest, WritesThePackageAndReportsIt) {
    const CommandResult result = run({"export", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.status, 0);
    const std::string path = utf8Path(folder() / "room");
    EXPECT_EQ(result.out.substr(0, result.out.find('\n')), path);
    EXPECT_NE(result.out.find("index.jsx  "), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("Skipped (1)\n  the node is hidden."), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("\n    Unseen\n"), std::string::npos) << result.out;
    EXPECT_EQ(result.err, "tolvex: reading room.scene.json ...\n");
    for (const char* name : {"misc", "resources", "thumbs"})
        EXPECT_TRUE(fs::is_directory(folder() / "room" / name));
}

TEST_F(ExportTest, QuietPrintsThePathOnly) {
    const CommandResult result = run({"export", "--quiet", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.out, utf8Path(folder() / "room") + "\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ExportTest, JsonIsOneDocumentWithCodes) {
    const CommandResult result = run({"export", "--json", "room.scene.json", "room.jsx"});
    const auto report = nlohmann::json::parse(result.out);
    EXPECT_EQ(report["package"], utf8Path(folder() / "room"));
    std::vector<std::string> files;
    for (const auto& file : report["files"]) {
        const fs::path path = pathOfUtf8(file["path"].get<std::string>());
        files.push_back(withSlashes(utf8Path(path.lexically_relative(folder() / "room"))));
        EXPECT_EQ(file["bytes"], fs::file_size(folder() / "room" / files.back()));
    }
    EXPECT_THAT(files, testing::UnorderedElementsAre("index.jsx", "where.json", "webtables.json",
                                                     "resources/default.dds",
                                                     "resources/FXUnlitSkyboxCubic.material"));
    EXPECT_EQ(report["found"]["objects"], 2);
    EXPECT_EQ(report["totals"]["skipped"], 1);
    EXPECT_EQ(report["messages"][0]["code"], "node-hidden");
    EXPECT_EQ(report["messages"][0]["subject"], "Unseen");
}

TEST_F(ExportTest, StrictEndsWithStatus1WhereSomethingWasSkipped) {
    EXPECT_EQ(run({"export", "--strict", "room.scene.json", "a.jsx"}).status, 1);
    EXPECT_TRUE(fs::exists(folder() / "a/index.jsx"));
    EXPECT_EQ(run({"export", "--strict", "--export-hidden", "room.scene.json", "b.jsx"}).status, 0);
}

TEST_F(ExportTest, ReadsASnapshotFromStandardInput) {
    EXPECT_EQ(run({"export", "-", "room.jsx"}, withStandardInput(kRoom)).status, 0);
    EXPECT_TRUE(fs::exists(folder() / "room/index.jsx"));
    const CommandResult empty = run({"export", "-", "other.jsx"});
    EXPECT_EQ(empty.status, 2);
    EXPECT_EQ(lastLine(empty.err), "tolvex: standard input: is empty; save the scene again");
}

TEST_F(ExportTest, ReadsFilesOfOtherPrograms) {
    write("tri.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_EQ(run({"export", "tri.obj", "tri.jsx"}).status, 0);
    EXPECT_NE(package("tri").at("index.jsx").find("<mesh"), std::string::npos);
}

TEST_F(ExportTest, ScenesThatCannotBeReadEndWithStatus2) {
    write("empty.scene.json", "");
    write("cut.scene.json", std::string(kRoom).substr(0, 60));
    write("cut.scene.cbor", "\xA1\x66");
    write("scene.xyz", "?");
    fs::create_directory(folder() / "folder.scene.json");
    for (const char* scene : {"missing.scene.json", "missing.fbx", "empty.scene.json", "cut.scene.json",
                              "cut.scene.cbor", "scene.xyz", "folder.scene.json", ""}) {
        const CommandResult result = run({"export", scene, "out.jsx"});
        EXPECT_EQ(result.status, 2) << scene;
        EXPECT_EQ(result.out, "") << scene;
        if (*scene != '\0') {
            EXPECT_TRUE(lastLine(result.err).starts_with(std::string("tolvex: ") + scene + ": "))
                << result.err;
        }
    }
    EXPECT_FALSE(fs::exists(folder() / "out"));
    EXPECT_NE(run({"inspect", "scene.xyz"}).err.find(".fbx"), std::string::npos) << "tells what can be read";
}

TEST_F(ExportTest, ATargetWithoutAFolderEndsWithStatus3) {
    write("file", "");
    for (const char* target : {"none/room.jsx", "file/room.jsx"}) {
        const CommandResult result = run({"export", "room.scene.json", target});
        const std::string package = asPathText(utf8Path((folder() / target).replace_extension()));
        EXPECT_EQ(result.status, 3) << target;
        EXPECT_EQ(result.out, "") << target;
        EXPECT_TRUE(lastLine(result.err).find(package + ": ") != std::string::npos) << result.err;
    }
    EXPECT_TRUE(lastLine(run({"export", "room.scene.json", "none/room.jsx"}).err)
                    .starts_with("tolvex: create_directory: "));
}

TEST_F(ExportTest, AnExistingPackageIsLeftAlone) {
    makeOldPackage();
    const Tree before = package();
    const CommandResult result = run({"export", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(lastLine(result.err).starts_with("tolvex: remove: " + utf8Path(folder() / "room") + ": "))
        << result.err;
    EXPECT_NE(result.err.find("--overwrite"), std::string::npos);
    EXPECT_EQ(firstDifference(before, package()), std::nullopt);
}

TEST_F(ExportTest, OverwriteReplacesAPackageWhole) {
    makeOldPackage();
    EXPECT_EQ(run({"export", "--overwrite", "room.scene.json", "room.jsx"}).status, 0);
    EXPECT_FALSE(fs::exists(folder() / "room/thumbs/old.png"));
    EXPECT_NE(package().at("index.jsx"), "old");
    EXPECT_EQ(entryCount(), 2U) << "the scene and the package, nothing set aside";
}

TEST_F(ExportTest, OverwriteReplacesNothingButPackages) {
    writeTree(folder() / "room", {{"index.jsx", "mine"}, {"diary.txt", "mine"}});
    const Tree before = package();
    const CommandResult result = run({"export", "--overwrite", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(result.err.find("is no package"), std::string::npos) << result.err;
    EXPECT_EQ(firstDifference(before, package()), std::nullopt);
}

TEST_F(ExportTest, OverwriteKeepsTheSceneThatItReads) {
    makeOldPackage();
    write("room/inner.scene.json", kRoom);
    EXPECT_EQ(run({"export", "--overwrite", "room/inner.scene.json", "room.jsx"}).status, 2);
    EXPECT_TRUE(fs::exists(folder() / "room/inner.scene.json"));
}

TEST_F(ExportTest, AHostErrorIsNamedAndLeavesNothingBehind) {
    write("room.scene.json", R"({"format": "tolvex-scene", "version": 1, "roots": [0], "nodes": [)"
                             R"({"name": "A", "instances": [], "object": {"type": "helper"}}]})");
    const CommandResult result = run({"export", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(result.err.find("TabOutOfRangeException: Invalid index passed into a Max SDK Tab::operator[]"),
              std::string::npos)
        << result.err;
    expectNothingButScenes();
}

TEST_F(ExportTest, DialogRulesHoldUnlessPromptsAreSuppressed) {
    write("sun.scene.json", R"({"format": "tolvex-scene", "version": 1, "roots": [0], "nodes": [)"
                            R"({"name": "L", "object": {"type": "light", "light": {"type": 2}}}]})");
    // A fraction that was not given keeps its default: the helper light is there at 0.8.
    EXPECT_EQ(run({"export", "sun.scene.json", "a.jsx"}).status, 0);
    EXPECT_NE(package("a").at("index.jsx").find("r: 0.800000"), std::string::npos);
    EXPECT_EQ(run({"export", "--helper-light-fraction", "0.25", "sun.scene.json", "b.jsx"}).status, 0);
    EXPECT_NE(package("b").at("index.jsx").find("r: 0.250000"), std::string::npos);
    EXPECT_EQ(run({"export", "--suppress-prompts", "--ambient-red", "-2", "sun.scene.json", "c.jsx"}).status,
              0);
    EXPECT_NE(package("c").at("where.json").find("\"r\": -2.0"), std::string::npos);
}

}  // namespace
}  // namespace velinor
