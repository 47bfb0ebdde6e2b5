// Further scene files that other programs wrote, each for one thing, and files that must be refused.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>

#include "base/text.h"
#include "tests/acceptance/scene_reading.h"
#include "tests/support/run_command.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using host::IGameObject;
using host::Point3;

TEST(ReserveFiles, BinaryGltfWithAnImageWithinAndATurnedRoot) {
    const SceneReading read(modelFile("glTF2/BoxTextured-glTF-Binary/BoxTextured.glb"));
    ASSERT_EQ(read.scene.roots.size(), 1U);
    const SnapshotNode& root = read.scene.nodes.at(read.scene.roots[0]);
    EXPECT_EQ(root.worldTransform[1][2], -1) << "the root of the file is a node, and turned by 90 degrees";
    EXPECT_EQ(read.triangles(), 12U);
    const std::u16string image = read.bitmapOfParameter(read.material(u"Texture"), u"base_color_map");
    EXPECT_EQ(fs::file_size(read.fileOf(image)), 2433U);
}

TEST(ReserveFiles, ColladaWithEveryKindOfLight) {
    const SceneReading read(modelFile("Collada/lights.dae"));
    std::vector<std::int32_t> types;
    for (const SnapshotNode& node : read.scene.nodes) {
        if (node.object->type == IGameObject::IGAME_LIGHT) types.push_back(node.object->light->type);
    }
    EXPECT_THAT(types, testing::UnorderedElementsAre(host::OMNI_LGT, host::OMNI_LGT, host::SPOT_LGT,
                                                     host::DIRECT_LGT));
    EXPECT_THAT(read.said(), testing::HasSubstr("1 node (\"Hemi\") has an ambient light, which is left out"));
    EXPECT_TRUE(read.scene.meshes.empty());
}

TEST(ReserveFiles, ColladaWithTwoChannelsOfThreeComponents) {
    const SceneReading read(modelFile("Collada/cube_with_2UVs.DAE"));
    ASSERT_EQ(read.scene.meshes.size(), 1U);
    const auto& maps = read.scene.meshes[0].maps;
    ASSERT_EQ(maps.size(), 2U);
    EXPECT_NE(maps.at(1).vertices, maps.at(2).vertices);
}

// The file's places are (x, z, -y) of the host's, and its children stand in units of ten.
TEST(ReserveFiles, FbxWithNamesInCyrillic) {
    const SceneReading read(modelFile("FBX/cubes_with_names.fbx"));
    const SnapshotNode& parent = read.node(u"Cube2");
    expectRow(parent, 3, -1.040239F, 1.0437596F, 0.9982888F);
    const SnapshotNode& child = read.node(u"\u041A\u0443\u04311");
    EXPECT_EQ(read.parentOf(child), u"Cube2");
    expectRow(child, 3, -1.040239F + 10.40239F, 1.0437596F - 10.437596F, 0.9982888F - 9.982888F, 1e-5F);
}

TEST(ReserveFiles, ThreeDsWithAnOpacity) {
    const SceneReading read(modelFile("3DS/cubes_with_alpha.3DS"));
    float least = 1;
    for (const SnapshotMaterial& material : read.scene.materials)
        least = std::min(least, material.opacity);
    EXPECT_NEAR(least, 0.83F, 0.005F);
}

TEST(ReserveFiles, XFromMax) {
    const SceneReading read(modelFile("X/kwxport_test_cubewithvcolors.x"));
    EXPECT_EQ(read.triangles(), 12U);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 1U);
}

TEST(ReserveFiles, StlFromMax) {
    const SceneReading read(modelFile("STL/3DSMaxExport.STL"));
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 1U);
    EXPECT_EQ(read.triangles(), 2000U);
    // After a header of 80 bytes, the number of triangles and a normal.
    const std::string bytes = bytesOf(modelFile("STL/3DSMaxExport.STL"));
    Point3 first;
    std::memcpy(&first, bytes.data() + 96, sizeof first);
    EXPECT_EQ(read.scene.meshes.at(0).vertices.at(0), first);
    expectRow(read.scene.nodes.at(0), 3, 0, 0, 0);
}

TEST(ReserveFiles, AseInUtf16) {
    const SceneReading read(modelFile("ASE/ThreeCubesGreen_UTF16LE.ASE"));
    const SceneReading plain(modelFile("ASE/ThreeCubesGreen.ASE"));
    EXPECT_TRUE(read.scene == plain.scene);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 3U);
    EXPECT_EQ(read.scene.materials.size(), 3U);
}

TEST(ReserveFiles, InfiniteCoordinatesAreLeftOut) {
    const SceneReading read(modelFile("glTF2/BoxWithInfinites-glTF-Binary/BoxWithInfinites.glb"));
    EXPECT_TRUE(read.scene.meshes.empty());
    EXPECT_THAT(read.said(), testing::HasSubstr("12 triangles with coordinates that are not finite"));
}

class Refusal : public testing::Test {
  protected:
    // Status 2, one line that names the file after the one that tells what is read, and no output.
    void expectRefused(const fs::path& file) const {
        SCOPED_TRACE(file);
        const fs::path snapshot = folder_.path() / "out.scene.json";
        const CommandResult result = runTolvex({"snapshot", utf8Path(file), utf8Path(snapshot)});
        EXPECT_EQ(result.status, 2) << result.err;
        EXPECT_THAT(result.err, testing::HasSubstr("\ntolvex: " + utf8Path(file) + ": "));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 2) << result.err;
        EXPECT_FALSE(fs::exists(snapshot));
    }

    const fs::path& folder() const { return folder_.path(); }

  private:
    TemporaryFolder folder_;
};

TEST_F(Refusal, OfEveryFileThatIsNoScene) {
    int files = 0;
    for (const auto& entry : fs::directory_iterator(modelFile("invalid"))) {
        // It has two triangles among its faults.
        if (entry.path().filename() == "malformed2.obj") continue;
        expectRefused(entry.path());
        ++files;
    }
    EXPECT_EQ(files, 14);
}

TEST_F(Refusal, OfFilesThatAreCutOff) {
    struct Case {
        const char* file;
        std::size_t bytes;
    };
    for (const Case& c :
         {Case{"FBX/spider.fbx", 20000}, Case{"ASE/anim2.ASE", 9000},
          Case{"glTF2/BoxTextured-glTF-Binary/BoxTextured.glb", 3000}, Case{"PLY/cube.ply", 250}}) {
        const fs::path whole = modelFile(c.file);
        const fs::path file = folder() / whole.filename();
        std::ofstream(file, std::ios::binary) << bytesOf(whole).substr(0, c.bytes);
        expectRefused(file);
    }
}

}  // namespace
}  // namespace velinor
