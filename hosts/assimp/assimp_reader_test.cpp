// Files of real programs, and what their scenes are in the host.
#include "hosts/assimp/assimp_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "base/text.h"
#include "hosts/assimp/assimp_test_support.h"

namespace velinor {
namespace {

using host::IGameObject;

using AssimpModels = ModelTest;

void expectSound(const ReadScene& read) {
    EXPECT_EQ(faultOf(read.scene), "");
}

void expectUnitNormals(const SnapshotMesh& mesh) {
    ASSERT_FALSE(mesh.specifiedNormals.empty());
    for (const host::Point3& n : mesh.specifiedNormals) {
        ASSERT_NEAR(std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z), 1.0F, 1e-5F);
    }
}

host::Box3 boxOf(const SnapshotMesh& mesh) {
    host::Box3 box;
    for (const host::Point3& p : mesh.vertices)
        box.Include(p);
    return box;
}

TEST_F(AssimpModels, ZUpFbxOfMaxKeepsItsBoxAsItStands) {
    const ReadScene read = readModel("FBX/embedded_ascii/box.FBX");
    expectSound(read);
    ASSERT_EQ(read.scene.nodes.size(), 1U);
    const SnapshotNode& box = read.node(u"Box001");
    expectUnrotated(box, 0.0254F);
    expectAt(box, 0, 0, 0, 0);
    const SnapshotMesh& mesh = read.meshOf(box);
    EXPECT_EQ(mesh.faces.size(), 12U);
    EXPECT_EQ(mesh.maps.size(), 1U);
    EXPECT_TRUE(mesh.maps.contains(1));
    expectUnitNormals(mesh);
    const host::Box3 extent = boxOf(mesh);
    EXPECT_NEAR(extent.pmin.x, -23.622F, 1e-3F);
    EXPECT_NEAR(extent.pmax.y, 23.622F, 1e-3F);
    EXPECT_NEAR(extent.pmin.z, 0, 1e-3F);
    EXPECT_NEAR(extent.pmax.z, 47.244F, 1e-3F);
    EXPECT_EQ(read.materialOf(box).className, u"Standard");
    EXPECT_EQ(read.materialOf(box).name, u"03 - Default");
}

TEST_F(AssimpModels, YUpFbxOfMaxStandsUnrotated) {
    const ReadScene read = readModel("FBX/maxPbrMaterial_metalRough.fbx");
    expectSound(read);
    ASSERT_EQ(read.scene.nodes.size(), 1U);
    const SnapshotNode& box = read.node(u"Box001");
    EXPECT_EQ(box.worldTransform[0], (host::GMatrix::Row{1, 0, 0, 0}));
    EXPECT_EQ(box.worldTransform[1], (host::GMatrix::Row{0, 1, 0, 0}));
    EXPECT_EQ(box.worldTransform[2], (host::GMatrix::Row{0, 0, 1, 0}));
    expectAt(box, 0.57066F, 0.67127F, 0, 1e-5F);
    EXPECT_EQ(read.materialOf(box).className, u"Physical Material");
    EXPECT_EQ(read.materialOf(box).name, u"PBR Material");
}

TEST_F(AssimpModels, FbxWithMirrorsAndPivotsKeepsNamesAndHierarchy) {
    const ReadScene read = readModel("FBX/cubes_with_mirroring_and_pivot.fbx");
    expectSound(read);
    EXPECT_EQ(read.scene.nodes.size(), 4U);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 4U);
    EXPECT_EQ(read.triangles(), 420U);
    EXPECT_EQ(read.scene.roots, (std::vector<SnapshotRef>{0, 2}));
    EXPECT_EQ(read.node(u"Cube2").children, (std::vector<SnapshotRef>{1}));
    EXPECT_EQ(read.node(u"Cube3").children, (std::vector<SnapshotRef>{3}));
    EXPECT_TRUE(read.node(u"Cube2").worldTransform.IsMirrored());
    EXPECT_TRUE(read.node(u"Cube1", 0).worldTransform.IsMirrored());
    EXPECT_FALSE(read.node(u"Cube3").worldTransform.IsMirrored());
    EXPECT_FALSE(read.node(u"Cube1", 1).worldTransform.IsMirrored());
    // The chain of pivots: its scale is 0.773848 of the parent's 0.1.
    expectRow(read.node(u"Cube1", 1).worldTransform[0], 0.0773848F, 0, 0, 1e-7F);
    EXPECT_EQ(read.materialOf(read.node(u"Cube2")).name, u"Mat_Green");
    EXPECT_EQ(read.materialOf(read.node(u"Cube3")).name, u"Mat_Red");
    EXPECT_EQ(read.materialOf(read.node(u"Cube3")).className, u"Standard");
}

TEST_F(AssimpModels, BlenderFbxHasItsLightAndCameraWhereBlenderHasThem) {
    const ReadScene read = readModel("FBX/spider.fbx");
    expectSound(read);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 19U);
    EXPECT_EQ(read.triangles(), 1368U);
    const SnapshotNode& lamp = read.node(u"Lamp");
    ASSERT_EQ(read.type(u"Lamp"), IGameObject::IGAME_LIGHT);
    expectAt(lamp, 407.62F, 100.55F, 590.39F, 0.01F);
    EXPECT_EQ(lamp.object->light->type, host::OMNI_LGT);
    EXPECT_EQ(lamp.object->light->color, (host::Point3{1, 1, 1}));
    EXPECT_EQ(lamp.object->light->intens, 1);
    const SnapshotNode& camera = read.node(u"Camera");
    ASSERT_EQ(read.type(u"Camera"), IGameObject::IGAME_CAMERA);
    expectAt(camera, 748.11F, -650.76F, 534.37F, 0.01F);
    // Blender's own matrix of its default camera, by columns.
    expectRow(camera.worldTransform[0], 0.685881F, 0.727633F, -0.010817F, 1e-5F);
    expectRow(camera.worldTransform[1], -0.317370F, 0.312469F, 0.895343F, 1e-5F);
    expectRow(camera.worldTransform[2], 0.654862F, -0.610666F, 0.445245F, 1e-5F);
}

TEST_F(AssimpModels, GlbSharesMeshesAndKeepsEveryPrimitive) {
    const ReadScene read = readModel("glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb");
    expectSound(read);
    EXPECT_EQ(read.scene.nodes.size(), 82U);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_CAMERA), 1U);
    // 34 primitives in 29 meshes. The file's 75730 triangles include many with a corner twice, which are
    // told.
    EXPECT_EQ(read.scene.meshes.size(), 29U);
    std::size_t dropped = 0;
    for (const ImportNote& note : read.notes.notes()) {
        if (note.text.find("corner twice") == std::string::npos) continue;
        dropped += std::stoul(note.text.substr(note.text.find(" have ") + 6));
    }
    EXPECT_EQ(read.triangles() + dropped, 75730U);
    std::size_t single = 0;
    for (const SnapshotMaterial& material : read.scene.materials)
        single += material.subMaterials.empty() ? 1U : 0U;
    EXPECT_EQ(single, 34U);
    std::set<std::vector<SnapshotRef>> groups;
    std::size_t nodesWithPrimitives = 0;
    for (const SnapshotNode& node : read.scene.nodes) {
        if (node.instances) groups.insert(node.instances->nodes());
        if (node.material && !read.materialOf(node).subMaterials.empty()) ++nodesWithPrimitives;
    }
    EXPECT_EQ(groups.size(), 14U);
    EXPECT_EQ(nodesWithPrimitives, 28U);
}

TEST_F(AssimpModels, GltfOfBlenderHasPhysicalMaterialsAndHelpers) {
    const ReadScene read = readModel("glTF2/ClearCoat-glTF/ClearCoatTest.gltf");
    expectSound(read);
    EXPECT_EQ(read.scene.meshes.size(), 27U);
    EXPECT_EQ(read.triangles(), 37116U);
    EXPECT_EQ(read.scene.materials.size(), 19U);
    for (const SnapshotMaterial& material : read.scene.materials) {
        EXPECT_EQ(material.className, u"Physical Material") << toUtf8(material.name);
    }
    expectAt(read.node(u"BaseLayerSample"), -2.1F, 0, 5.25F, 1e-5F);
    expectUnrotated(read.node(u"BaseLayerSample"));
    EXPECT_EQ(read.type(u"R0_SimpleCoatTest"), IGameObject::IGAME_HELPER);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_HELPER), 6U);
}

TEST_F(AssimpModels, ColladaOfMaxInInchesHasItsMaterialIds) {
    const ReadScene read = readModel("Collada/kwxport_test_vcolors.dae");
    expectSound(read);
    ASSERT_EQ(read.scene.nodes.size(), 1U);
    const SnapshotNode& box = read.node(u"Box01");
    expectAt(box, 0, 0, -19.685F, 1e-4F);
    expectUnrotated(box);
    const SnapshotMesh& mesh = read.meshOf(box);
    EXPECT_EQ(mesh.faces.size(), 12U);
    ASSERT_EQ(mesh.materialIds.size(), 12U);
    for (const auto& [id, faces] : {std::pair{0, 2}, {1, 2}, {2, 8}}) {
        EXPECT_EQ(std::count(mesh.materialIds.begin(), mesh.materialIds.end(), id), faces)
            << "material ID " << id;
    }
    const SnapshotMaterial& multi = read.materialOf(box);
    ASSERT_EQ(multi.subMaterials.size(), 3U);
    const char16_t* const names[] = {u"bottom", u"top", u"side"};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(multi.subMaterials[i].id, static_cast<std::int32_t>(i));
        ASSERT_TRUE(multi.subMaterials[i].material);
        EXPECT_EQ(read.scene.materials[*multi.subMaterials[i].material].name, names[i]);
        EXPECT_EQ(read.scene.materials[*multi.subMaterials[i].material].className, u"Standard");
    }
}

TEST_F(AssimpModels, ColladaInstancesShareTheirMeshAndTheFirstIsMaster) {
    const ReadScene read = readModel("Collada/teapot_instancenodes.DAE");
    expectSound(read);
    ASSERT_EQ(read.scene.nodes.size(), 3U);
    const SnapshotNode& first = read.node(u"Teapot01", 0);
    const SnapshotNode& second = read.node(u"Teapot01", 1);
    expectAt(first, -3.8013F, 2.5806F, 0, 1e-3F);
    expectAt(second, -124.6F, 5.1613F, 0, 1e-2F);
    EXPECT_EQ(first.object->mesh, second.object->mesh);
    ASSERT_TRUE(first.instances && second.instances);
    EXPECT_EQ(first.instances->nodes(), (std::vector<SnapshotRef>{2, 0}));
    EXPECT_EQ(&first.instances->nodes(), &second.instances->nodes()) << "the list is not shared";
    EXPECT_EQ(read.type(u"whatever"), IGameObject::IGAME_HELPER);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_HELPER), 1U);
    EXPECT_EQ(read.scene.meshes.size(), 1U);
    EXPECT_EQ(read.triangles(), 1024U);
}

TEST_F(AssimpModels, ThreeDsStandsUpright) {
    const ReadScene read = readModel("3DS/test1.3ds");
    expectSound(read);
    EXPECT_EQ(read.scene.nodes.size(), 9U);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 9U);
    EXPECT_EQ(read.triangles(), 108U);
    expectAt(read.node(u"Box02"), -0.070875F, 0.0018524F, -9.959F, 1e-4F);
    EXPECT_EQ(read.materialOf(read.node(u"Box02")).className, u"Standard");
}

TEST_F(AssimpModels, ObjGroupsBecomeNodes) {
    const ReadScene read = readModel("OBJ/spider.obj");
    expectSound(read);
    EXPECT_EQ(read.scene.nodes.size(), 19U);
    EXPECT_EQ(read.countOfType(IGameObject::IGAME_MESH), 19U);
    EXPECT_EQ(read.triangles(), 1368U);
    std::vector<std::u16string> names;
    for (const SnapshotMaterial& material : read.scene.materials)
        names.push_back(material.name);
    EXPECT_EQ(names,
              (std::vector<std::u16string>{u"Skin", u"Brusttex", u"HLeibTex", u"BeinTex", u"Augentex"}));
}

TEST_F(AssimpModels, StlStandsAsItIsAndIsCalledAfterItsFile) {
    const ReadScene read = readModel("STL/3DSMaxExport.STL");
    expectSound(read);
    ASSERT_EQ(read.scene.nodes.size(), 1U);
    expectUnrotated(read.node(u"3DSMaxExport"));
    EXPECT_EQ(read.triangles(), 2000U);
}

TEST_F(AssimpModels, XOfMaxStandsUpright) {
    // The same box as COLLADA in inches; this file is in metres.
    const ReadScene read = readModel("X/kwxport_test_cubewithvcolors.x");
    expectSound(read);
    const SnapshotNode& box = read.node(u"Box01");
    expectUnrotated(box);
    expectAt(box, 0, 0, -0.492126F, 1e-5F);
    const host::Box3 extent = boxOf(read.meshOf(box));
    EXPECT_NEAR(extent.pmin.z, 0, 1e-5F);
    EXPECT_NEAR(extent.pmax.z, 0.984252F, 1e-5F);
    EXPECT_TRUE(read.isNoted(utf8Path(models() / "X/kwxport_test_cubewithvcolors.x"), "vertex colours"));
}

// A scene of that format is none of the library's business, even under another name.
TEST_F(AssimpModels, AseIsNotRead) {
    EXPECT_FALSE(canReadWithAssimp("room.ase"));
    EXPECT_FALSE(canReadWithAssimp("room.ask"));
    const ScratchFolder folder;
    std::ifstream stream(models() / "ASE/anim2.ASE", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    ASSERT_FALSE(bytes.empty());
    EXPECT_NE(refusal(folder.write("room.3ds", bytes)), "");
}

TEST_F(AssimpModels, ColladaLightsOfAllKinds) {
    const ReadScene read = readModel("Collada/lights.dae");
    EXPECT_EQ(read.node(u"Lamp").object->light->type, host::OMNI_LGT);
    EXPECT_EQ(read.node(u"Sun").object->light->type, host::DIRECT_LGT);
    EXPECT_EQ(read.node(u"Spot").object->light->type, host::SPOT_LGT);
    EXPECT_EQ(read.type(u"Hemi"), IGameObject::IGAME_HELPER);
    EXPECT_TRUE(
        read.isNoted(utf8Path(models() / "Collada/lights.dae"), "1 node (\"Hemi\") has an ambient light"));
    expectAt(read.node(u"Sun"), 7.0767F, -5.57229F, 5.14722F, 1e-4F);
    expectUnrotated(read.node(u"Sun"));
}

TEST_F(AssimpModels, TwoUvSetsBecomeTwoChannelsWithThreeComponents) {
    const ReadScene read = readModel("Collada/cube_with_2UVs.DAE");
    expectSound(read);
    ASSERT_EQ(read.scene.meshes.size(), 1U);
    EXPECT_TRUE(read.scene.meshes[0].maps.contains(1));
    EXPECT_TRUE(read.scene.meshes[0].maps.contains(2));
    EXPECT_NE(read.scene.meshes[0].maps.at(1), read.scene.meshes[0].maps.at(2));
}

TEST_F(AssimpModels, CyrillicNamesArriveAsTheyAre) {
    const ReadScene read = readModel("FBX/cubes_with_names.fbx");
    bool hasCyrillic = false;
    for (const SnapshotNode& node : read.scene.nodes) {
        for (const char16_t c : node.name)
            hasCyrillic = hasCyrillic || (c >= 0x0400 && c < 0x0500);
    }
    EXPECT_TRUE(hasCyrillic);
}

TEST_F(AssimpModels, EmptyNamesOfFbxStayEmpty) {
    const ReadScene read = readModel("FBX/cubes_nonames.fbx");
    expectSound(read);
    EXPECT_GT(read.countOfType(IGameObject::IGAME_MESH), 0U);
    for (const SnapshotNode& node : read.scene.nodes)
        EXPECT_EQ(node.name, u"");
}

TEST_F(AssimpModels, AnimationsAndSkinsOfFbxAreTold) {
    const ReadScene read = readModel("FBX/animation_with_skeleton.fbx");
    const std::string file = utf8Path(models() / "FBX/animation_with_skeleton.fbx");
    EXPECT_TRUE(read.isNoted(file, "animations are left out"));
    EXPECT_TRUE(read.isNoted(file, "skins are left out"));
    EXPECT_GT(read.countOfType(IGameObject::IGAME_BONE), 0U);
}

TEST_F(AssimpModels, CoordinatesThatAreNotFiniteAreLeftOut) {
    const ReadScene read = readModel("glTF2/BoxWithInfinites-glTF-Binary/BoxWithInfinites.glb");
    expectSound(read);
    bool isTold = false;
    for (const ImportNote& note : read.notes.notes()) {
        isTold = isTold || note.text.find("not finite") != std::string::npos;
    }
    EXPECT_TRUE(isTold);
    for (const SnapshotMesh& mesh : read.scene.meshes) {
        for (const host::Point3& p : mesh.vertices)
            EXPECT_TRUE(std::isfinite(p.x + p.y + p.z));
    }
}

TEST_F(AssimpModels, MisleadingFilesAreRefusedWithAReason) {
    struct Case {
        const char* file;
        const char* reason;
    };
    for (const Case& c : {
             Case{"OBJ/box_UTF16BE.obj", "UTF-16"},
             Case{"invalid/OutOfMemory.off", "promises"},
         }) {
        const std::string message = refusal(models() / c.file);
        EXPECT_EQ(message.rfind(utf8Path(models() / c.file) + ": ", 0), 0U) << message;
        EXPECT_NE(message.find(c.reason), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
}

}  // namespace
}  // namespace velinor
