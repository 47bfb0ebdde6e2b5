#include "cli/scene_source.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "cli/command_error.h"
#include "cli/interrupts.h"
#include "hosts/snapshot/scene_error.h"
#include "tests/support/environment.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// Asked to stop at the first step of an import.
class StoppedProgress final : public Progress {
  public:
    void beginPhase(std::string_view name, std::uint64_t /*total*/) override {
        if (name == "Reading the scene file") throw Interrupted();
    }
    void advance(std::uint64_t /*amount*/) override {}
};

class SceneSourceTest : public testing::Test {
  protected:
    fs::path write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_.path() / name) << text;
        return folder_.path() / name;
    }
    bool isTemporaryEmpty() const { return fs::is_empty(temporary_.path()); }

    const std::string triangle_ = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

  private:
    TemporaryFolder temporary_;
    TemporaryFolder folder_;
    TemporaryFilesIn variable_{temporary_.path()};
};

TEST_F(SceneSourceTest, TheFolderForImagesLivesAsLongAsTheScene) {
    NoProgress progress;
    {
        const SceneSource source = openScene(write("a.obj", triangle_), progress, {SceneImages::extract});
        ASSERT_TRUE(source.images);
        EXPECT_TRUE(fs::is_directory(source.images->path()));
    }
    EXPECT_TRUE(isTemporaryEmpty());
}

TEST_F(SceneSourceTest, ThereIsNoneForSnapshotsAndWhereImagesAreNotWanted) {
    NoProgress progress;
    EXPECT_FALSE(openScene(write("a.obj", triangle_), progress, {SceneImages::leave}).images);
    const fs::path snapshot =
        write("a.scene.json", R"({"format": "tolvex-scene", "version": 1, "nodes": [], "roots": []})");
    EXPECT_FALSE(openScene(snapshot, progress, {SceneImages::extract}).images);
}

TEST_F(SceneSourceTest, ARefusedOrStoppedImportLeavesNone) {
    NoProgress progress;
    EXPECT_THROW(openScene(write("a.fbx", "; FBX"), progress, {SceneImages::extract}), SceneError);
    EXPECT_TRUE(isTemporaryEmpty());
    StoppedProgress stopped;
    EXPECT_THROW(openScene(write("a.obj", triangle_), stopped, {SceneImages::extract}), Interrupted);
    EXPECT_TRUE(isTemporaryEmpty());
}

TEST_F(SceneSourceTest, AseFilesAreReadHereWithTheirNotes) {
    NoProgress progress;
    const std::string text = "*3DSMAX_ASCIIEXPORT 200\n*HELPEROBJECT {\n*NODE_NAME \"A\"\n*NODE_TM {\n}\n}\n";
    for (const char* name : {"a.ase", "B.ASE", "c.ask"}) {
        const fs::path file = write(name, text);
        const SceneSource source =
            openScene(file, progress, {SceneImages::extract, {.assetFolders = {file.parent_path()}}});
        ASSERT_EQ(source.scene.nodes.size(), 1U);
        EXPECT_EQ(source.scene.nodes[0].name, u"A");
        EXPECT_EQ(source.scene.assetFolders.size(), 1U);
        EXPECT_EQ(source.folder, file.parent_path());
        EXPECT_EQ(source.notes.notes().size(), 1U);
        EXPECT_TRUE(source.images) << "for links to bitmaps";
    }
    EXPECT_THROW(openScene(write("d.ase", "*"), progress, {}), SceneError);
}

TEST_F(SceneSourceTest, WhereNoneCanBeMadeTheMessageTellsWhatToDo) {
    const fs::path scene = write("a.obj", triangle_);
    const TemporaryFilesIn variable(scene / "none");
    NoProgress progress;
    try {
        openScene(scene, progress, {SceneImages::extract});
        ADD_FAILURE() << "nothing was thrown";
    } catch (const CommandError& error) {
        EXPECT_EQ(error.status(), kFailed);
        EXPECT_NE(std::string(error.what()).find("set " + std::string(kTemporaryFolderVariable) + " to"),
                  std::string::npos)
            << error.what();
    }
}

}  // namespace
}  // namespace velinor
