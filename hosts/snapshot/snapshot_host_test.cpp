#include "hosts/snapshot/snapshot_host.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

namespace velinor {
namespace {

namespace fs = std::filesystem;
using host::IGameNode;
using host::Point3;
using host::Point4;

// A group with the master last, a mesh with a material, a light and a helper with parameters.
SceneSnapshot makeScene() {
    SceneSnapshot scene;
    scene.animationStart = 160;
    scene.nodes.resize(6);
    scene.nodes[0].name = u"Root";
    scene.nodes[0].children = {3, 1};
    scene.nodes[0].userProperties = {{u"qv_wt_res_w", 1024}};
    const InstanceList group({4, 1, 3});
    for (const SnapshotRef n : {1U, 3U, 4U}) {
        scene.nodes[n].instances = group;
        scene.nodes[n].object = SnapshotObject{.type = 2, .className = u"Box", .mesh = 0};
        scene.nodes[n].material = 1;
    }
    scene.nodes[1].hidden = true;
    scene.nodes[3].layerHidden = true;
    scene.nodes[3].selected = true;
    scene.nodes[3].worldTransform[3][2] = 7;
    scene.nodes[2].instances = InstanceList({});
    scene.nodes[2].object = SnapshotObject{.type = 1, .light = host::LightState{2, {1, 0, 0}, 3}};
    scene.nodes[5].object = SnapshotObject{.type = 5, .parameters = {{u"azimuth_deg", 45.0F}}};
    scene.roots = {5, 0, 2, 4};
    scene.meshes.resize(1);
    SnapshotMesh& mesh = scene.meshes[0];
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 2, -3}};
    mesh.faces = {{0, 1, 2}, {2, 1, 0}};
    mesh.smoothing = {1, 0};
    mesh.materialIds = {5, 2};
    mesh.maps[3] = {{{0.5F, 0.25F, 0}}, {{0, 0, 0}, {0, 0, 0}}};
    mesh.maps[4] = {{{1, 1, 1}}, {}};
    scene.materials.resize(3);
    scene.materials[0] = {.className = u"Standard",
                          .name = u"S",
                          .properties = {},
                          .diffuse = {1, 2, 3},
                          .opacity = 0.5F,
                          .glossiness = 0.25F,
                          .specular = Point3{1, 1, 1},
                          .textureMaps = {{8, 1}, {1, 0}}};
    scene.materials[1] = {.className = u"Multi", .name = u"M", .subMaterials = {{4, 0}, {2, std::nullopt}}};
    scene.materials[2] = {.className = u"Physical Material",
                          .name = u"P",
                          .properties = {{u"roughness", 0.5F},
                                         {u"three", Point3{1, 2, 3}},
                                         {u"base_color", Point4{1, 2, 3, 4}},
                                         {u"text", std::u16string(u"t")},
                                         {u"bump_map", SnapshotMapProperty{1}},
                                         {u"no_map", SnapshotMapProperty{}},
                                         {u"roughness", 0.75F}},
                          .textureMaps = {{1, 0}}};
    scene.maps = {{u"Bitmap", u"a.png", {}}, {u"Normal Bump", u"", {0, std::nullopt}}};
    return scene;
}

class SnapshotHostTest : public testing::Test {
  protected:
    IGameNode* root(int index) { return host_->GetIGameInterface()->GetTopLevelNode(index); }
    IGameNode* meshNode() { return root(1)->GetNodeChild(0); }
    host::IGameMaterial* multi() { return meshNode()->GetNodeMaterial(); }

    SceneSnapshot scene_ = makeScene();
    std::unique_ptr<host::Host> host_ = makeSnapshotHost(scene_, "");
};

TEST_F(SnapshotHostTest, ListsNodesInOrder) {
    host::IGameScene* scene = host_->GetIGameInterface();
    EXPECT_TRUE(scene->InitialiseIGame(false));
    EXPECT_FALSE(scene->InitialiseIGame(true));
    EXPECT_EQ(scene->GetTotalNodeCount(), 6);
    EXPECT_EQ(scene->GetTopLevelNodeCount(), 4);
    EXPECT_EQ(root(1)->GetName(), u"Root");
    EXPECT_EQ(root(1)->GetChildCount(), 2);
    EXPECT_EQ(meshNode()->GetObjectTM().Translation(), (Point3{0, 0, 7}));
    EXPECT_EQ(host_->GetAnimRange().Start(), 160);
}

TEST_F(SnapshotHostTest, AnswersForHostNodes) {
    host::INode* node = meshNode()->GetMaxNode();
    EXPECT_TRUE(node->Selected());
    EXPECT_FALSE(node->IsObjectHidden());
    EXPECT_TRUE(node->GetLayer()->IsHidden(true));
    EXPECT_TRUE(root(1)->GetNodeChild(1)->GetMaxNode()->IsObjectHidden());
    EXPECT_FALSE(root(1)->GetMaxNode()->GetLayer()->IsHidden(false));
    std::int32_t value = -1;
    EXPECT_FALSE(root(1)->GetMaxNode()->GetUserPropInt(u"qv_wt_res_h", value));
    EXPECT_EQ(value, -1);
    EXPECT_TRUE(root(1)->GetMaxNode()->GetUserPropInt(u"qv_wt_res_w", value));
    EXPECT_EQ(value, 1024);
}

TEST_F(SnapshotHostTest, GivesInstancesWithTheMasterLast) {
    const host::INodeTab group = host_->GetInstanceMgr()->GetInstances(*root(3)->GetMaxNode());
    ASSERT_EQ(group.Count(), 3);
    EXPECT_EQ(group[0], root(3)->GetMaxNode());
    EXPECT_EQ(group[2], meshNode()->GetMaxNode());
    const host::INodeTab self = host_->GetInstanceMgr()->GetInstances(*root(1)->GetMaxNode());
    ASSERT_EQ(self.Count(), 1);
    EXPECT_EQ(self[0], root(1)->GetMaxNode());
    const host::INodeTab none = host_->GetInstanceMgr()->GetInstances(*root(2)->GetMaxNode());
    EXPECT_EQ(none.Count(), 0);
    EXPECT_THROW(none[none.Count() - 1], host::TabOutOfRangeException);
}

TEST_F(SnapshotHostTest, GivesObjectsUntilTheyAreReleased) {
    EXPECT_EQ(root(1)->GetIGameObject(), nullptr);
    EXPECT_EQ(root(1)->GetMaxNode()->EvalWorldState(0), nullptr);
    host::IGameObject* object = meshNode()->GetIGameObject();
    EXPECT_EQ(meshNode()->GetIGameObject(), object);
    EXPECT_EQ(object->GetIGameType(), 2);
    EXPECT_EQ(object->GetMaxObject(), meshNode()->GetMaxNode()->EvalWorldState(0));
    EXPECT_EQ(object->GetMaxObject()->GetObjectName(), u"Box");
    EXPECT_TRUE(object->InitializeData());
    EXPECT_EQ(object->GetIPropertyContainer(), nullptr);
    meshNode()->ReleaseIGameObject();
    EXPECT_EQ(meshNode()->GetIGameObject()->GetIGameType(), 2);
}

TEST_F(SnapshotHostTest, GivesLightsAndParameters) {
    auto* light = dynamic_cast<host::LightObject*>(root(2)->GetIGameObject()->GetMaxObject());
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->EvalLightState(0), (host::LightState{2, {1, 0, 0}, 3}));
    EXPECT_EQ(light->ConvertToTriObject(0), nullptr);
    EXPECT_EQ(light->GetDeformBBox(0), (host::Box3{{}, {}}));
    host::IPropertyContainer* parameters = root(0)->GetIGameObject()->GetIPropertyContainer();
    float value = 0;
    ASSERT_NE(parameters->QueryProperty(u"azimuth_deg"), nullptr);
    EXPECT_TRUE(parameters->QueryProperty(u"azimuth_deg")->GetPropertyValue(value));
    EXPECT_EQ(value, 45);
    EXPECT_EQ(parameters->QueryProperty(u"altitude_deg"), nullptr);
}

TEST_F(SnapshotHostTest, DefaultsTheLightState) {
    scene_.nodes[2].object->light.reset();
    auto* light = dynamic_cast<host::LightObject*>(root(2)->GetIGameObject()->GetMaxObject());
    EXPECT_EQ(light->EvalLightState(0), (host::LightState{0, {1, 1, 1}, 1}));
}

TEST_F(SnapshotHostTest, GivesMeshes) {
    auto* gameMesh = dynamic_cast<host::IGameMesh*>(meshNode()->GetIGameObject());
    ASSERT_NE(gameMesh, nullptr);
    EXPECT_EQ(gameMesh->GetNumberOfFaces(), 2);
    EXPECT_EQ(gameMesh->GetActiveMatIDs(), (std::vector<int>{2, 5}));
    EXPECT_EQ(gameMesh->GetMaxObject()->GetDeformBBox(0), (host::Box3{{0, 0, -3}, {1, 2, 0}}));
    host::TriObject* triangles = gameMesh->GetMaxObject()->ConvertToTriObject(0);
    EXPECT_EQ(triangles, gameMesh->GetMaxObject());
    host::Mesh& mesh = triangles->GetMesh();
    mesh.buildNormals();
    ASSERT_EQ(mesh.faces().size(), 2U);
    EXPECT_EQ(mesh.faces()[0], (host::Face{{0, 1, 2}, 1, 5U << 16U}));
    EXPECT_EQ(mesh.faces()[1].getMatID(), 2);
    EXPECT_EQ(mesh.verts().size(), 3U);
    EXPECT_EQ(mesh.getNumMaps(), 5);
    EXPECT_FALSE(mesh.mapSupport(1));
    EXPECT_TRUE(mesh.mapSupport(3));
    EXPECT_TRUE(mesh.mapSupport(4));
    EXPECT_EQ(mesh.mapVerts(3)[0], (Point3{0.5F, 0.25F, 0}));
    EXPECT_EQ(mesh.mapFaces(3).size(), 2U);
    EXPECT_TRUE(mesh.mapFaces(4).empty());
    EXPECT_TRUE(mesh.mapFaces(-1).empty());
    EXPECT_EQ(mesh.getRVertex(0).rFlags, 1U);
    EXPECT_EQ(mesh.getRVertex(0).normals[0].smGroup, 1U);
    EXPECT_FLOAT_EQ(mesh.getFaceNormal(1).y, -3 / std::sqrt(13.0F));
    EXPECT_FLOAT_EQ(mesh.getFaceNormal(1).z, -2 / std::sqrt(13.0F));
}

TEST_F(SnapshotHostTest, GivesWhatAMeshStatesOfItself) {
    SnapshotMesh& given = scene_.meshes[0];
    given.mapChannels = 1;
    given.activeMaterialIds = std::vector<int>{9, 5};
    given.specifiedNormals = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    scene_.nodes[3].object->faceCount = -4;
    scene_.nodes[3].object->boundingBox = host::Box3{{1, 1, 1}, {2, 2, 2}};
    auto* gameMesh = dynamic_cast<host::IGameMesh*>(meshNode()->GetIGameObject());
    EXPECT_EQ(gameMesh->GetNumberOfFaces(), -4);
    EXPECT_EQ(gameMesh->GetActiveMatIDs(), (std::vector<int>{9, 5}));
    EXPECT_EQ(gameMesh->GetMaxObject()->GetDeformBBox(0), (host::Box3{{1, 1, 1}, {2, 2, 2}}));
    host::Mesh& mesh = gameMesh->GetMaxObject()->ConvertToTriObject(0)->GetMesh();
    mesh.buildNormals();
    EXPECT_EQ(mesh.getNumMaps(), 1);
    EXPECT_EQ(mesh.getRVertex(1).rFlags, host::RVertex::SPECIFIED_NORMAL | 1U);
    EXPECT_EQ(mesh.getRVertex(1).normals[0].normal, (Point3{0, 1, 0}));
}

TEST_F(SnapshotHostTest, DefaultsMaterialIdsAndMapChannels) {
    SnapshotMesh& given = scene_.meshes[0];
    given.materialIds.clear();
    given.maps.clear();
    given.smoothing.clear();
    auto* gameMesh = dynamic_cast<host::IGameMesh*>(meshNode()->GetIGameObject());
    EXPECT_EQ(gameMesh->GetActiveMatIDs(), std::vector<int>{0});
    host::Mesh& mesh = gameMesh->GetMaxObject()->ConvertToTriObject(0)->GetMesh();
    EXPECT_EQ(mesh.getNumMaps(), 2);
    EXPECT_EQ(mesh.faces()[1], (host::Face{{2, 1, 0}, 0, 0}));
    given.faces.clear();
    given.vertices.clear();
    EXPECT_TRUE(gameMesh->GetActiveMatIDs().empty());
    EXPECT_EQ(gameMesh->GetMaxObject()->GetDeformBBox(0), (host::Box3{{}, {}}));
}

TEST_F(SnapshotHostTest, GivesStandardMaterials) {
    EXPECT_EQ(root(1)->GetNodeMaterial(), nullptr);
    EXPECT_EQ(multi()->GetMaterialName(), u"M");
    ASSERT_EQ(multi()->GetSubMaterialCount(), 2);
    EXPECT_EQ(multi()->GetMaterialID(0), 4);
    EXPECT_EQ(multi()->GetSubMaterial(1), nullptr);
    EXPECT_EQ(multi()->GetDiffuseData(), nullptr);
    host::IGameMaterial* standard = multi()->GetSubMaterial(0);
    EXPECT_EQ(standard->GetMaterialClass(), u"Standard");
    EXPECT_LT(standard, multi());
    Point3 color;
    EXPECT_TRUE(standard->GetDiffuseData()->GetPropertyValue(color));
    EXPECT_EQ(color, (Point3{1, 2, 3}));
    float number = 9;
    EXPECT_TRUE(standard->GetOpacityData()->GetPropertyValue(number));
    EXPECT_EQ(number, 0.5F);
    EXPECT_TRUE(standard->GetGlossinessData()->GetPropertyValue(number));
    EXPECT_EQ(number, 0.25F);
    EXPECT_FALSE(standard->GetSpecularData()->GetPropertyValue(number));
    EXPECT_EQ(number, 0.25F);
    ASSERT_EQ(standard->GetNumberOfTextureMaps(), 2);
    EXPECT_EQ(standard->GetIGameTextureMap(0)->GetStdMapSlot(), 8);
    host::Texmap* bump = standard->GetIGameTextureMap(0)->GetMaxTexmap();
    EXPECT_EQ(bump->GetClassName(), u"Normal Bump");
    EXPECT_EQ(bump->GetSubTexmap(0)->GetMapName(), u"a.png");
    EXPECT_EQ(bump->GetSubTexmap(1), nullptr);
    EXPECT_EQ(bump->GetSubTexmap(2), nullptr);
    EXPECT_EQ(bump->GetSubTexmap(-1), nullptr);
}

TEST_F(SnapshotHostTest, ReadsSpecularNumbersOnly) {
    const struct {
        decltype(SnapshotMaterial::specular) specular;
        float expected;
    } cases[] = {{0.75F, 0.75F}, {Point3{1, 1, 1}, -1}, {std::monostate(), -1}};
    for (const auto& c : cases) {
        SceneSnapshot scene = makeScene();
        scene.nodes[0].material = 0;
        scene.materials[0].specular = c.specular;
        const auto host = makeSnapshotHost(scene, "");
        float number = -1;
        host::IGameProperty* specular =
            host->GetIGameInterface()->GetTopLevelNode(1)->GetNodeMaterial()->GetSpecularData();
        EXPECT_EQ(specular->GetPropertyValue(number), c.expected >= 0);
        EXPECT_EQ(number, c.expected);
    }
}

TEST(SnapshotHost, GivesPropertiesInOrderAndAsWhatTheyAre) {
    SceneSnapshot scene = makeScene();
    scene.nodes[0].material = 2;
    const auto host = makeSnapshotHost(scene, "");
    host::IGameMaterial* material = host->GetIGameInterface()->GetTopLevelNode(1)->GetNodeMaterial();
    EXPECT_EQ(material->GetNumberOfTextureMaps(), 0);
    struct Names final : host::PropertyEnum {
        bool Proc(host::IGameProperty& property) override {
            names.emplace_back(property.GetName());
            return names.size() == limit;
        }
        std::vector<std::u16string> names;
        std::size_t limit = 100;
    } names;
    material->GetIPropertyContainer()->EnumerateProperties(names);
    EXPECT_EQ(names.names, (std::vector<std::u16string>{u"roughness", u"three", u"base_color", u"text",
                                                        u"bump_map", u"no_map", u"roughness"}));
    Names two;
    two.limit = 2;
    material->GetIPropertyContainer()->EnumerateProperties(two);
    EXPECT_EQ(two.names.size(), 2U);
    const struct {
        const char16_t* name;
        bool number, three, four, map;
    } cases[] = {{u"roughness", true, false, false, false},  {u"three", false, true, false, false},
                 {u"base_color", false, false, true, false}, {u"text", false, false, false, false},
                 {u"bump_map", false, false, false, true},   {u"no_map", false, false, false, false}};
    for (const auto& c : cases) {
        host::IGameProperty* property = material->GetIPropertyContainer()->QueryProperty(c.name);
        ASSERT_NE(property, nullptr);
        float number = 8;
        Point3 three{8, 8, 8};
        Point4 four{8, 8, 8, 8};
        EXPECT_EQ(property->GetPropertyValue(number), c.number);
        EXPECT_EQ(property->GetPropertyValue(three), c.three);
        EXPECT_EQ(property->GetPropertyValue(four), c.four);
        EXPECT_EQ(number, c.number ? 0.5F : 8);
        EXPECT_EQ(three, c.three ? (Point3{1, 2, 3}) : (Point3{8, 8, 8}));
        EXPECT_EQ(four, c.four ? (Point4{1, 2, 3, 4}) : (Point4{8, 8, 8, 8}));
        EXPECT_EQ(property->GetTexmap() != nullptr, c.map);
    }
    EXPECT_EQ(material->GetIPropertyContainer()->QueryProperty(u"metalness"), nullptr);
}

class SnapshotFilesTest : public testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(folder_ / "assets");
        for (const char* name : {"here.png", "assets/there.png", "both.png", "assets/both.png"}) {
            std::ofstream(folder_ / name) << "x";
        }
        scene_.assetFolders = {u"nowhere", u"assets"};
        host_ = makeSnapshotHost(scene_, folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    // The full path that is found, against the folder; empty for none.
    std::string resolve(std::u16string file) {
        const std::u16string before = file;
        const bool isFound =
            host_->GetFileResolutionManager()->GetFullFilePath(file, host::AssetType::kBitmapAsset);
        if (!isFound) {
            EXPECT_EQ(file, before);
            return {};
        }
        EXPECT_TRUE(fs::path(file).is_absolute());
        return fs::path(file).lexically_relative(folder_).generic_string();
    }

    fs::path folder_ =
        fs::path(testing::TempDir()) /
        (std::string("snapshot_files_") + testing::UnitTest::GetInstance()->current_test_info()->name());
    SceneSnapshot scene_;
    std::unique_ptr<host::Host> host_;
};

TEST_F(SnapshotFilesTest, LooksForRelativeNamesInTheFolder) {
    EXPECT_TRUE(host_->DoesFileExist(u"here.png"));
    EXPECT_TRUE(host_->DoesFileExist(u"assets/there.png"));
    EXPECT_FALSE(host_->DoesFileExist(u"there.png"));
    EXPECT_TRUE(host_->DoesFileExist((folder_ / "here.png").u16string()));
    EXPECT_FALSE(host_->DoesFileExist(u""));
    EXPECT_FALSE(host_->DoesFileExist(std::u16string(u"here.png\0.jpg", 13)));
    EXPECT_FALSE(host_->DoesFileExist(std::u16string(100'000, u'x')));
}

TEST_F(SnapshotFilesTest, ResolvesInOrder) {
    const struct {
        std::u16string file;
        std::string found;
    } cases[] = {
        {u"here.png", "here.png"},
        {u"there.png", "assets/there.png"},
        {u"D:\\maps\\there.png", "assets/there.png"},
        {u"/other/place/both.png", "both.png"},
        {u"a/b\\here.png", "here.png"},
        {u"assets/there.png", "assets/there.png"},
        {u"missing.png", ""},
        {u"", ""},
        {u"D:\\maps\\", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(resolve(c.file), c.found) << fs::path(c.file);
    EXPECT_EQ(resolve((folder_ / "both.png").u16string()), "both.png");
}

}  // namespace
}  // namespace velinor
