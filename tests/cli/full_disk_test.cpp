// Writes that the system refuses. Systems other than POSIX have no limit of file sizes and no full device to
// try it with.
#include <string>

#include "base/text.h"
#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

class FullDiskTest : public CommandTest {
  protected:
    // A limit for onFullDisk: below the size of what large.scene.json becomes, above all that standard error
    // gets.
    static constexpr std::uint64_t kSmallDisk = 10000;

    // Writes large.scene.json: a helper whose parameter alone is larger than kSmallDisk.
    void writeLargeScene() const {
        write("large.scene.json",
              R"({"format": "tolvex-scene", "version": 1, "roots": [0], "nodes": [{"name": "A [k: )" +
                  std::string(2 * kSmallDisk, 'v') + R"(]", "object": {"type": "helper"}}]})");
    }
};

TEST_F(FullDiskTest, AFullDiskLeavesNothingBehind) {
    writeLargeScene();
    const CommandResult result =
        run({"export", "--no-export-materials", "large.scene.json", "room.jsx"}, onFullDisk(kSmallDisk));
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(
        lastLine(result.err).starts_with("tolvex: write: " + utf8Path(folder() / "room/index.jsx") + ": "))
        << result.err;
    expectNothingButScenes();
}

TEST_F(FullDiskTest, ACopyThatFailsNamesBothFilesAndLeavesNothingBehind) {
    const CommandResult result = run({"export", "room.scene.json", "room.jsx"}, onFullDisk(kSmallDisk));
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_EQ(result.out, "");
    const std::string line = lastLine(result.err);
    EXPECT_TRUE(line.starts_with("tolvex: copy: ")) << line;
    EXPECT_NE(line.find("/Plugins/tolvex/res/default.dds to " +
                        utf8Path(folder() / "room/resources/default.dds") + ": "),
              std::string::npos)
        << line;
    EXPECT_TRUE(line.ends_with("; check the free space there and the permissions of both")) << line;
    expectNothingButScenes();
}

TEST_F(FullDiskTest, AnImageOfTheSceneThatCannotBeWrittenIsNoFaultOfTheScene) {
    const fs::path scene = fs::path(TOLVEX_TEST_MODELS) / "glTF2/BoxTextured-glTF-Binary/BoxTextured.glb";
    ASSERT_TRUE(fs::exists(scene)) << "install the package assimp-testmodels";
    const CommandResult result = run({"export", utf8Path(scene), "room.jsx"}, onFullDisk(1000));
    EXPECT_EQ(result.status, 3) << result.err;
    const std::string line = lastLine(result.err);
    EXPECT_TRUE(line.starts_with("tolvex: write: ")) << line;
    EXPECT_TRUE(line.ends_with("; check the free space there and the permissions")) << line;
    expectNothingButScenes();
}

TEST_F(FullDiskTest, AFailedOverwriteBringsTheOldPackageBack) {
    writeLargeScene();
    makeOldPackage();
    const Tree before = readTree(folder() / "room");
    EXPECT_EQ(run({"export", "--overwrite", "large.scene.json", "room.jsx"}, onFullDisk(kSmallDisk)).status,
              3);
    EXPECT_EQ(firstDifference(before, readTree(folder() / "room")), std::nullopt);
    EXPECT_EQ(entryCount(), 3U);
}

TEST_F(FullDiskTest, AFailedExportBringsBackWhatGaveWay) {
    writeLargeScene();
    write("room", "a file of that name");
    EXPECT_EQ(run({"export", "large.scene.json", "room.jsx"}, onFullDisk(kSmallDisk)).status, 3);
    EXPECT_TRUE(fs::is_regular_file(folder() / "room"));
    EXPECT_EQ(run({"export", "room.scene.json", "room.jsx"}).status, 0);
    EXPECT_TRUE(fs::exists(folder() / "room/index.jsx"));
    EXPECT_EQ(entryCount(), 3U);
}

TEST_F(FullDiskTest, AResultThatCannotBePrintedIsAnError) {
    const CommandResult result = run({"export", "room.scene.json", "room.jsx"}, printingTo("/dev/full"));
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(lastLine(result.err).starts_with("tolvex: standard output: write: ")) << result.err;
}

TEST_F(FullDiskTest, ASnapshotReplacesAFileOnlyByAWholeOne) {
    writeLargeScene();
    write("out.scene.json", "old");
    const CommandResult failed =
        run({"snapshot", "large.scene.json", "out.scene.json"}, onFullDisk(kSmallDisk));
    EXPECT_EQ(failed.status, 3);
    EXPECT_TRUE(lastLine(failed.err).starts_with("tolvex: write: out.scene.json: ")) << failed.err;
    EXPECT_EQ(readTree(folder()).at("out.scene.json"), "old");
    EXPECT_EQ(readTree(folder()).size(), 3U) << "no temporary file is left";
    EXPECT_EQ(run({"snapshot", "room.scene.json", "out.scene.json"}).status, 0);
    EXPECT_NE(readTree(folder()).at("out.scene.json"), "old");
}

}  // namespace
}  // namespace velinor
