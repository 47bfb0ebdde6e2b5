// Scene files that other programs wrote: the values that each of them is there for, in host space.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "base/text.h"
#include "tests/acceptance/scene_reading.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using host::IGameObject;
using host::Point3;
using testing::ElementsAre;

// Whether the node is neither turned nor stretched, but scaled by `scale`.
void expectUpright(const SnapshotNode& node, float scale = 1) {
    expectRow(node, 0, scale, 0, 0);
    expectRow(node, 1, 0, scale, 0);
    expectRow(node, 2, 0, 0, scale);
}

void expectBox(const SnapshotMesh& mesh, Point3 min, Point3 max, float tolerance) {
    host::Box3 box;
    for (const Point3& vertex : mesh.vertices)
        box.Include(vertex);
    EXPECT_NEAR(box.pmin.x, min.x, tolerance);
    EXPECT_NEAR(box.pmin.y, min.y, tolerance);
    EXPECT_NEAR(box.pmin.z, min.z, tolerance);
    EXPECT_NEAR(box.pmax.x, max.x, tolerance);
    EXPECT_NEAR(box.pmax.y, max.y, tolerance);
    EXPECT_NEAR(box.pmax.z, max.z, tolerance);
}

std::string lastName(std::u16string_view bitmap) {
    std::string path = toUtf8(bitmap);
    return path.substr(path.find_last_of("/\\") + 1);
}

TEST(SceneValues, StandardMaterialOfMaxWithAnEmbeddedImage) {
    const SceneReading read(modelFile("FBX/embedded_ascii/box.FBX"));
    const SnapshotNode& box = read.node(u"Box001");
    expectUpright(box, 0.0254F);
    expectRow(box, 3, 0, 0, 0);
    expectBox(read.meshOf(box), {-23.622F, -23.622F, 0}, {23.622F, 23.622F, 47.244F}, 1e-3F);
    const SnapshotMaterial& material = read.materialOf(box);
    EXPECT_EQ(material.className, u"Standard");
    EXPECT_EQ(material.name, u"03 - Default");
    EXPECT_NEAR(material.diffuse.x, 0.588235F, 1e-6F);
    EXPECT_NEAR(material.glossiness, 0.1F, 1e-6F);
    EXPECT_EQ(material.opacity, 1);
    ASSERT_EQ(material.textureMaps.size(), 1U);
    const std::u16string image = read.bitmapOfSlot(material, 1);
    EXPECT_EQ(lastName(image), "uv_test.png") << "without the folder of the Windows machine it comes from";
    EXPECT_EQ(fs::file_size(read.fileOf(image)), 439176U);
    EXPECT_EQ(bytesOf(read.fileOf(image)).substr(1, 3), "PNG");
}

TEST(SceneValues, PhysicalMaterialOfMaxBelowATurnedAxis) {
    const SceneReading read(modelFile("FBX/maxPbrMaterial_metalRough.fbx"));
    const SnapshotNode& box = read.node(u"Box001");
    expectUpright(box);
    const SnapshotMaterial& material = read.materialOf(box);
    EXPECT_EQ(material.className, u"Physical Material");
    EXPECT_EQ(read.parameter<host::Point4>(material, u"base_color"), (host::Point4{0, 1, 1, 1}));
    EXPECT_EQ(read.parameter<float>(material, u"roughness"), 0.5F);
    EXPECT_EQ(read.parameter<float>(material, u"metalness"), 0.25F);
    EXPECT_EQ(read.parameter<float>(material, u"transparency"), 0);
    EXPECT_EQ(read.scene.maps.size(), 6U);
    const std::map<std::u16string, std::string> images{{u"base_color_map", "albedo.png"},
                                                       {u"bump_map", "normal.png"},
                                                       {u"roughness_map", "roughness.png"},
                                                       {u"metalness_map", "metalness.png"},
                                                       {u"emission_map", "emission.png"}};
    for (const auto& [parameter, file] : images)
        EXPECT_EQ(lastName(read.bitmapOfParameter(material, parameter)), file) << toUtf8(parameter);
    const auto normal = read.parameter<SnapshotMapProperty>(material, u"bump_map").map;
    EXPECT_EQ(read.scene.maps.at(normal.value()).className, u"Normal Bump");
    EXPECT_THAT(read.said(), testing::HasSubstr("albedo.png\" is missing"));
}

TEST(SceneValues, MirroredNodesWithPivotsAndOneNameTwice) {
    const SceneReading read(modelFile("FBX/cubes_with_mirroring_and_pivot.fbx"));
    EXPECT_EQ(read.scene.roots.size(), 2U);
    EXPECT_EQ(read.parentOf(read.node(u"Cube1")), u"Cube2");
    EXPECT_EQ(read.parentOf(read.node(u"Cube1", 1)), u"Cube3");
    EXPECT_LT(determinant(read.node(u"Cube2")), 0);
    EXPECT_LT(determinant(read.node(u"Cube1")), 0);
    EXPECT_GT(determinant(read.node(u"Cube3")), 0);
    EXPECT_GT(determinant(read.node(u"Cube1", 1)), 0);
    EXPECT_EQ(read.meshOf(read.node(u"Cube1")).faces.size(), 12U);
    EXPECT_EQ(read.meshOf(read.node(u"Cube1", 1)).faces.size(), 384U);
    EXPECT_EQ(read.materialOf(read.node(u"Cube2")).diffuse, (Point3{0, 0.8F, 0}));
    EXPECT_EQ(read.materialOf(read.node(u"Cube3")).diffuse, (Point3{0.8F, 0, 0}));
}

TEST(SceneValues, BinaryFbxWithPathsOfAnotherMachine) {
    const fs::path images = modelFile("OBJ");
    const SceneReading read(modelFile("FBX/spider.fbx"), {"--asset-folder", utf8Path(images)});
    EXPECT_EQ(read.node(u"Lamp").object->light->type, host::OMNI_LGT);
    EXPECT_EQ(read.node(u"Lamp").object->light->color, (Point3{1, 1, 1}));
    const std::map<std::u16string, std::string> files{{u"Augentex", "engineflare1.jpg"},
                                                      {u"BeinTex", "drkwood2.jpg"},
                                                      {u"HLeibTex", "SpiderTex.jpg"},
                                                      {u"Skin", "wal67ar_small.jpg"}};
    EXPECT_EQ(read.scene.materials.size(), files.size());
    for (const auto& [material, file] : files)
        EXPECT_EQ(read.fileOf(read.bitmapOfSlot(read.material(material), 1)), images / file);
}

TEST(SceneValues, UnnamedNodesThatShareMeshesOfSeveralMaterials) {
    const SceneReading read(modelFile("glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb"));
    const SceneSnapshot& scene = read.scene;
    EXPECT_EQ(scene.nodes.size(), 82U);
    std::map<SnapshotRef, std::size_t> nodesOfMesh;
    std::map<SnapshotRef, std::set<std::uint16_t>> partsOfMesh;
    std::size_t nodesWithParts = 0;
    for (const SnapshotNode& node : scene.nodes) {
        EXPECT_EQ(toUtf8(node.name).substr(0, 6), "nodes[");
        if (!node.object->mesh) continue;
        ++nodesOfMesh[*node.object->mesh];
        const std::vector<std::uint16_t>& ids = read.meshOf(node).materialIds;
        auto& parts = partsOfMesh[*node.object->mesh];
        parts.insert(ids.begin(), ids.end());
        if (ids.empty()) parts.insert(0);
        nodesWithParts += parts.size() > 1 ? 1 : 0;
        EXPECT_EQ(read.materialOf(node).subMaterials.size(), parts.size() > 1 ? parts.size() : 0);
    }
    EXPECT_EQ(nodesWithParts, 28U);
    EXPECT_EQ(std::ranges::count_if(nodesOfMesh, [](const auto& mesh) { return mesh.second > 1; }), 14);
    std::size_t parts = 0;
    for (const auto& [mesh, ids] : partsOfMesh)
        parts += ids.size();
    EXPECT_EQ(parts, 34U) << "the primitives of the file";
    EXPECT_EQ(std::ranges::count(scene.materials, u"Physical Material", &SnapshotMaterial::className), 34);
}

// The file has 75730 triangles; it leaves corners twice where its triangles were made of strips.
TEST(SceneValues, TrianglesWithACornerTwiceAreCounted) {
    const SceneReading read(modelFile("glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb"));
    std::size_t leftOut = 0;
    std::istringstream lines(read.said());
    for (std::string line; std::getline(lines, line);) {
        const std::size_t at = line.find(" triangles with a corner twice");
        if (at == std::string::npos) continue;
        leftOut += std::stoul(line.substr(line.rfind(' ', at - 1) + 1));
    }
    EXPECT_EQ(read.triangles() + leftOut, 75730U);
}

TEST(SceneValues, MetallicRoughnessMaterialsWithPngAndJpeg) {
    const fs::path file = modelFile("glTF2/ClearCoat-glTF/ClearCoatTest.gltf");
    const SceneReading read(file);
    for (const SnapshotMaterial& material : read.scene.materials)
        EXPECT_EQ(material.className, u"Physical Material") << toUtf8(material.name);
    EXPECT_EQ(read.parentOf(read.node(u"BaseLayerSample")), u"R0_SimpleCoatTest");
    EXPECT_EQ(read.node(u"R0_SimpleCoatTest").object->type, IGameObject::IGAME_HELPER);
    const SnapshotMaterial& plain = read.material(u"Simple_Base");
    EXPECT_EQ(read.parameter<host::Point4>(plain, u"base_color"), (host::Point4{0.5F, 0.02F, 0.01F, 1}));
    EXPECT_EQ(read.parameter<float>(plain, u"roughness"), 0.44F);
    const SnapshotMaterial& wrapped = read.material(u"BaseNorm_Base");
    EXPECT_EQ(read.fileOf(read.bitmapOfParameter(wrapped, u"bump_map")),
              file.parent_path() / "RibsNormal.png");
    EXPECT_EQ(lastName(read.bitmapOfParameter(read.material(u"RoughVariations_Coating"), u"roughness_map")),
              "RoughnessStripes-roughness.png");
    EXPECT_EQ(read.fileOf(read.bitmapOfParameter(read.material(u"LabelMaterial"), u"emission_map")),
              file.parent_path() / "ClearCoatLabels.png");
}

TEST(SceneValues, ThreeMaterialsOnOneMeshOfMax) {
    const SceneReading read(modelFile("Collada/kwxport_test_vcolors.dae"));
    const SnapshotNode& box = read.node(u"Box01");
    expectUpright(box);
    const SnapshotMesh& mesh = read.meshOf(box);
    EXPECT_EQ(SceneReading::trianglesWithId(mesh, 0), 2U);
    EXPECT_EQ(SceneReading::trianglesWithId(mesh, 1), 2U);
    EXPECT_EQ(SceneReading::trianglesWithId(mesh, 2), 8U);
    const std::map<std::u16string, std::string> files{
        {u"bottom", "bottom.tga"}, {u"top", "top.tga"}, {u"side", "updown.tga"}};
    std::set<std::u16string> parts;
    for (const SnapshotSubMaterial& part : read.materialOf(box).subMaterials) {
        const SnapshotMaterial& material = read.scene.materials.at(part.material.value());
        parts.insert(material.name);
        const fs::path image = read.fileOf(read.bitmapOfSlot(material, 1));
        EXPECT_EQ(utf8Path(image.filename()), files.at(material.name));
        EXPECT_TRUE(fs::is_regular_file(image)) << image;
    }
    EXPECT_EQ(parts, (std::set<std::u16string>{u"bottom", u"side", u"top"}));
}

TEST(SceneValues, InstancesOfOneNodeInAnother) {
    const SceneReading read(modelFile("Collada/teapot_instancenodes.DAE"));
    const SnapshotNode& first = read.node(u"Teapot01");
    const SnapshotNode& second = read.node(u"Teapot01", 1);
    expectUpright(first);
    expectUpright(second);
    EXPECT_EQ(first.object->mesh, second.object->mesh);
    ASSERT_TRUE(first.instances);
    EXPECT_EQ(first.instances, second.instances);
    EXPECT_EQ(first.instances->nodes().size(), 2U);
    EXPECT_EQ(read.parentOf(second), u"whatever");
    EXPECT_EQ(read.node(u"whatever").object->type, IGameObject::IGAME_HELPER);
}

TEST(SceneValues, ScaledAndTurnedNodesWithNamesInCapitals) {
    const SceneReading read(modelFile("3DS/test1.3ds"));
    const SnapshotNode& box = read.node(u"Box02");
    expectRow(box, 0, 0, 0, 0.1014374F, 1e-6F);
    expectRow(box, 1, 0.1014374F, 0, 0, 1e-6F);
    expectRow(box, 2, 0, 0.1014374F, 0, 1e-6F);
    for (const SnapshotMaterial& material : read.scene.materials) {
        const fs::path image = read.fileOf(read.bitmapOfSlot(material, 1));
        EXPECT_TRUE(fs::is_regular_file(image)) << image;
        EXPECT_EQ(image.parent_path(), modelFile("3DS"));
    }
}

TEST(SceneValues, GroupsOfAnObjWithALibraryOfMaterials) {
    const SceneReading read(modelFile("OBJ/spider.obj"));
    const std::map<std::u16string, std::string> files{{u"Augentex", "engineflare1.jpg"},
                                                      {u"BeinTex", "drkwood2.jpg"},
                                                      {u"Brusttex", "wal69ar_small.jpg"},
                                                      {u"HLeibTex", "SpiderTex.jpg"},
                                                      {u"Skin", "wal67ar_small.jpg"}};
    ASSERT_EQ(read.scene.materials.size(), files.size());
    for (const SnapshotMaterial& material : read.scene.materials) {
        SCOPED_TRACE(toUtf8(material.name));
        EXPECT_EQ(read.fileOf(read.bitmapOfSlot(material, 1)), modelFile("OBJ/" + files.at(material.name)));
    }
    for (const SnapshotNode& node : read.scene.nodes)
        expectUpright(node);
}

// The transforms of an ASE file by node names, the first of each name: four rows of three numbers.
std::map<std::string, std::array<float, 12>> rowsInAse(const fs::path& file) {
    std::map<std::string, std::array<float, 12>> rows;
    std::istringstream lines(bytesOf(file));
    std::string name;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t quote = line.find('"');
        if (line.find("*NODE_NAME") != std::string::npos)
            name = line.substr(quote + 1, line.rfind('"') - quote - 1);
        const std::size_t at = line.find("*TM_ROW");
        if (at == std::string::npos) continue;
        const auto row = static_cast<std::size_t>(line[at + 7] - '0');
        std::istringstream numbers(line.substr(at + 8));
        for (std::size_t i = 0; i < 3; ++i)
            numbers >> rows[name].at(3 * row + i);
    }
    return rows;
}

void expectRowsOf(const SceneReading& read, const fs::path& file) {
    const auto rows = rowsInAse(file);
    std::size_t compared = 0;
    for (const SnapshotNode& node : read.scene.nodes) {
        const auto found = rows.find(toUtf8(node.name));
        if (found == rows.end()) continue;
        ++compared;
        for (int row = 0; row < 4; ++row) {
            const auto at = static_cast<std::size_t>(3 * row);
            expectRow(node, row, found->second[at], found->second[at + 1], found->second[at + 2], 0);
        }
    }
    EXPECT_EQ(compared, read.scene.nodes.size());
}

TEST(SceneValues, AseWithLightsACameraAndIds) {
    const fs::path file = modelFile("ASE/anim2.ASE");
    const SceneReading read(file);
    EXPECT_EQ(read.scene.nodes.size(), 6U);
    expectRowsOf(read, file);
    EXPECT_EQ(read.node(u"FDirect01").object->light->type, host::DIRECT_LGT);
    EXPECT_EQ(read.node(u"FDirect02").object->light->type, host::DIRECT_LGT);
    EXPECT_EQ(read.node(u"Sky01").object->light, (host::LightState{host::OMNI_LGT, {0.95F, 0.95F, 1}, 1}));
    for (const char16_t* name : {u"Box01", u"Box02"}) {
        const SnapshotMesh& box = read.meshOf(read.node(name));
        EXPECT_THAT(box.materialIds, ElementsAre(1, 1, 0, 0, 4, 4, 3, 3, 5, 5, 2, 2));
        EXPECT_THAT(box.smoothing, ElementsAre(2, 2, 4, 4, 8, 8, 16, 16, 32, 32, 64, 64));
        EXPECT_FALSE(read.node(name).material);
    }
}

TEST(SceneValues, AseOfABodyWithItsHierarchy) {
    const fs::path file = modelFile("ASE/MotionCaptureROM.ase");
    const SceneReading read(file);
    EXPECT_EQ(read.scene.nodes.size(), 31U);
    EXPECT_EQ(read.scene.roots.size(), 1U);
    expectRowsOf(read, file);
    EXPECT_EQ(read.parentOf(read.node(u"Bip01 R Zeh0Nub")), u"Bip01 R Zeh0");
    EXPECT_EQ(read.parentOf(read.node(u"Bip01 R Oberschenkel")), u"Bip01 Wirbels_ule");
    std::uint32_t groups = 0;
    for (const SnapshotMesh& mesh : read.scene.meshes) {
        for (const std::uint32_t mask : mesh.smoothing)
            groups |= mask;
        EXPECT_TRUE(mesh.maps.empty());
    }
    EXPECT_EQ(groups, 0x1FFFFU) << "groups 1 to 17";
    EXPECT_EQ(read.scene.materials.size(), 0U);
}

}  // namespace
}  // namespace velinor
