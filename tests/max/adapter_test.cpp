// The adapter to the SDK: a scene seen through it is the scene, and odd answers of a host do no harm.
#include "hosts/max/max_sdk.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "base/progress.h"
#include "base/report.h"
#include "hosts/max/max_host.h"
#include "hosts/snapshot/snapshot_host.h"
#include "plugin/accelerators_off_max.h"
#include "scene/scene_collection.h"
#include "tests/max/golden_cases.h"
#include "tests/max/max_stage.h"
#include "tests/max/scene_text.h"
#include "tests/support/test_scene.h"

namespace velinor {
namespace {

class GoldenScene : public testing::TestWithParam<std::string> {
  protected:
    SceneSnapshot scene_ = goldenScene(GetParam());
    std::unique_ptr<host::Host> given_ = makeSnapshotHost(scene_, caseFolder(GetParam()));
};

TEST_P(GoldenScene, IsTheSameThroughTheSdk) {
    MaxStage stage(*given_);
    MaxHost host;
    EXPECT_EQ(sceneText(host), sceneText(*given_));
    EXPECT_EQ(stage.sdkScene.treatment.heldObjects, 0);
    EXPECT_EQ(stage.sdkScene.treatment.conversions.made, 0);
}

TEST_P(GoldenScene, IsTheSameWhenMeshesAreConverted) {
    MaxStage stage(*given_);
    stage.sdkScene.oddities.convertsMeshes = true;
    MaxHost host;
    EXPECT_EQ(sceneText(host), sceneText(*given_));
    EXPECT_EQ(stage.sdkScene.treatment.conversions.ended, stage.sdkScene.treatment.conversions.made);
}

INSTANTIATE_TEST_SUITE_P(Case, GoldenScene, testing::ValuesIn(goldenCases()),
                         [](const auto& parameter) { return testName(parameter.param); });

// A small scene: a helper with a mesh of two faces and a light below it.
class MaxHostTest : public testing::Test {
  protected:
    MaxHostTest() {
        const SnapshotRef room = scene_.addHelper(u"room");
        mesh_ = scene_.addMesh(u"wall", room);
        scene_.addLight(u"lamp", {host::SPOT_LGT, {1, 0.5F, 0}, 3}, room);
    }

    // The stage over the scene as it is when it is first asked for.
    MaxStage& stage() {
        if (!stage_) {
            given_ = scene_.makeHost();
            stage_ = std::make_unique<MaxStage>(*given_);
        }
        return *stage_;
    }

    host::IGameNode* room() {
        stage();
        EXPECT_TRUE(host_.GetIGameInterface()->InitialiseIGame(false));
        return host_.GetIGameInterface()->GetTopLevelNode(0);
    }

    using Calls = std::vector<std::string>;

    TestScene scene_;
    SnapshotRef mesh_ = 0;
    std::unique_ptr<host::Host> given_;
    std::unique_ptr<MaxStage> stage_;
    MaxHost host_;
};

TEST_F(MaxHostTest, TakesTheSceneInItsOwnAxesAtFrameZeroAndGivesItBack) {
    room();
    const Calls begun{"axes 0", "initialise", "axes 0", "static frame 0"};
    EXPECT_EQ(stage().sdkScene.treatment.calls, begun);
    host_.release();
    host_.release();
    Calls ended = begun;
    ended.emplace_back("release");
    EXPECT_EQ(stage().sdkScene.treatment.calls, ended);
}

TEST_F(MaxHostTest, GivesTheSceneBackBeforeItTakesItAgain) {
    room();
    room();
    EXPECT_EQ(stage().sdkScene.treatment.calls,
              (Calls{"axes 0", "initialise", "axes 0", "static frame 0", "release", "axes 0", "initialise",
                     "axes 0", "static frame 0"}));
}

TEST_F(MaxHostTest, GivesTheSceneBackAtTheEndOfItsLife) {
    {
        MaxHost other;
        stage();
        ASSERT_TRUE(other.GetIGameInterface()->InitialiseIGame(false));
        other.GetIGameInterface()->GetTopLevelNode(0)->GetNodeChild(0)->GetIGameObject();
        EXPECT_EQ(stage().sdkScene.treatment.heldObjects, 1);
    }
    EXPECT_EQ(stage().sdkScene.treatment.heldObjects, 0);
    EXPECT_EQ(stage().sdkScene.treatment.calls.back(), "release");
}

TEST_F(MaxHostTest, DoesNotGiveBackWhatItDidNotGet) {
    stage().sdkScene.oddities.isNotEnumerated = true;
    EXPECT_FALSE(host_.GetIGameInterface()->InitialiseIGame(false));
    EXPECT_EQ(host_.GetIGameInterface()->GetTopLevelNodeCount(), 0);
    EXPECT_EQ(host_.GetIGameInterface()->GetTotalNodeCount(), 0);
    host_.release();
    EXPECT_EQ(stage().sdkScene.treatment.calls, (Calls{"axes 0", "initialise"}));
}

TEST_F(MaxHostTest, ReleasesObjectsOnceForEachUse) {
    host::IGameNode* wall = room()->GetNodeChild(0);
    wall->ReleaseIGameObject();
    EXPECT_EQ(stage().sdkScene.treatment.heldObjects, 0);
    host::IGameObject* object = wall->GetIGameObject();
    EXPECT_EQ(wall->GetIGameObject(), object);
    EXPECT_EQ(stage().sdkScene.treatment.heldObjects, 1);
    wall->ReleaseIGameObject();
    wall->ReleaseIGameObject();
    EXPECT_EQ(stage().sdkScene.treatment.heldObjects, 0);
    EXPECT_NE(wall->GetIGameObject(), nullptr);
}

TEST_F(MaxHostTest, EndsConvertedTrianglesThatNobodyHasEnded) {
    stage().sdkScene.oddities.convertsMeshes = true;
    const ConversionCount& count = stage().sdkScene.treatment.conversions;
    host::INode* wall = room()->GetNodeChild(0)->GetMaxNode();
    wall->EvalWorldState(0)->ConvertToTriObject(0);
    EXPECT_EQ(count.ended, 0);
    wall->EvalWorldState(0)->ConvertToTriObject(0);
    EXPECT_EQ(count.ended, 1);
    host_.release();
    EXPECT_EQ(count.made, 2);
    EXPECT_EQ(count.ended, 2);
}

TEST_F(MaxHostTest, FindsLightsThroughTheirNodes) {
    stage().sdkScene.oddities.hidesLights = true;
    host::IGameObject* lamp = room()->GetNodeChild(1)->GetIGameObject();
    const auto state = static_cast<host::LightObject*>(lamp->GetMaxObject())->EvalLightState(0);
    EXPECT_EQ(state, (host::LightState{host::SPOT_LGT, {1, 0.5F, 0}, 3}));
}

TEST_F(MaxHostTest, TakesALightThatIsNoneForWhite) {
    scene_.value.nodes[1].object->type = 1;
    scene_.value.nodes[1].object->mesh.reset();
    stage().sdkScene.oddities.hidesLights = true;
    stage().sdkScene.oddities.hasNullMaxNodes = true;
    host::IGameObject* wall = room()->GetNodeChild(0)->GetIGameObject();
    EXPECT_EQ(static_cast<host::LightObject*>(wall->GetMaxObject())->EvalLightState(0), host::LightState());
}

TEST_F(MaxHostTest, AsksOnceForEachGroupOfInstances) {
    std::vector<SnapshotRef> members;
    for (int i = 0; i < 50; ++i) {
        members.push_back(scene_.addHelper(u"copy"));
    }
    for (const SnapshotRef member : members)
        scene_[member].instances = InstanceList(members);
    room();
    for (int i = 1; i <= 50; ++i) {
        host::INode* node = host_.GetIGameInterface()->GetTopLevelNode(i)->GetMaxNode();
        const host::INodeTab group = host_.GetInstanceMgr()->GetInstances(*node);
        ASSERT_EQ(group.Count(), 50);
        EXPECT_EQ(group[i - 1], node);
    }
    EXPECT_EQ(stage().sdkScene.treatment.instanceQuestions, 1);
}

TEST_F(MaxHostTest, LetsTheHostsOwnErrorThroughOnAnEmptyListOfInstances) {
    stage().sdkScene.oddities.hasEmptyInstanceList = true;
    EXPECT_THROW(host_.GetInstanceMgr()->GetInstances(*room()->GetMaxNode()), ::TabOutOfRangeException);
}

TEST_F(MaxHostTest, TakesANodeForItselfWithoutAnInstanceManager) {
    stage().hasManagers = false;
    host::INode* node = room()->GetMaxNode();
    const host::INodeTab group = host_.GetInstanceMgr()->GetInstances(*node);
    ASSERT_EQ(group.Count(), 1);
    EXPECT_EQ(group[0], node);
    EXPECT_EQ(host_.GetFileResolutionManager(), nullptr);
}

// Collection asks a host for most of what it has.
TEST_F(MaxHostTest, SurvivesNullsInPlaceOfNodesAndObjects) {
    struct Case {
        const char* name;
        bool SdkOddities::*oddity;
        std::size_t meshes;
    };
    for (const Case& c :
         {Case{"nodes", &SdkOddities::hasNullNodes, 0}, Case{"host nodes", &SdkOddities::hasNullMaxNodes, 1},
          Case{"host objects", &SdkOddities::hasNullMaxObjects, 1},
          Case{"texts", &SdkOddities::hasNullTexts, 1}}) {
        stage().sdkScene.oddities = {};
        stage().sdkScene.oddities.*c.oddity = true;
        MaxHost host;
        ASSERT_TRUE(host.GetIGameInterface()->InitialiseIGame(false));
        Report report;
        NoProgress progress;
        CollectedScene collected;
        collectScene({*host.GetInstanceMgr(), ExportSettings(), NamePatterns(), collected, report, progress},
                     *host.GetIGameInterface());
        EXPECT_EQ(collected.meshNodes.size(), c.meshes) << c.name;
        EXPECT_FALSE(sceneText(host).empty()) << c.name;
    }
}

TEST_F(MaxHostTest, AnswersNothingWithoutAHost) {
    MaxHost host;
    EXPECT_FALSE(host.GetIGameInterface()->InitialiseIGame(false));
    EXPECT_EQ(host.GetAnimRange().Start(), 0);
    EXPECT_FALSE(host.DoesFileExist(u"/"));
    EXPECT_EQ(host.GetFileResolutionManager(), nullptr);
    EXPECT_EQ(host.GetIGameInterface()->GetTopLevelNode(0)->GetIGameObject(), nullptr);
}

TEST_F(MaxHostTest, PassesQuestionsAboutFilesOn) {
    stage();
    const std::u16string here = u"" TOLVEX_PACKAGE_CASES u"/custom-maps/grey.png";
    EXPECT_TRUE(host_.DoesFileExist(here));
    EXPECT_FALSE(host_.DoesFileExist(u""));
    EXPECT_FALSE(host_.DoesFileExist(here + u"x"));
    EXPECT_FALSE(host_.DoesFileExist(here + std::u16string(1, u'\0')));
    std::u16string path = here;
    EXPECT_TRUE(host_.GetFileResolutionManager()->GetFullFilePath(path, host::AssetType::kXRefAsset));
    path = u"nowhere.png";
    EXPECT_FALSE(host_.GetFileResolutionManager()->GetFullFilePath(path, host::AssetType::kBitmapAsset));
    EXPECT_EQ(path, u"nowhere.png");
    EXPECT_EQ(stage().files.askedTypes, (std::vector<int>{2, 1}));
}

TEST_F(MaxHostTest, OrdersMaterialsByTheHostsAddresses) {
    scene_.value.materials.resize(3);
    for (const SnapshotRef material : {2U, 0U, 1U})
        scene_[scene_.addHelper(u"owner")].material = material;
    room();
    std::vector<const void*> handles;
    for (int i = 1; i <= 3; ++i) {
        const host::IGameMaterial* material =
            host_.GetIGameInterface()->GetTopLevelNode(i)->GetNodeMaterial();
        handles.push_back(material->handle());
    }
    EXPECT_LT(handles[1], handles[2]);
    EXPECT_LT(handles[2], handles[0]);
}

// A mesh of the SDK with what damaged scenes hold: indices of vertices that are not there, normals that are
// counted and missing.
class DamagedMesh final : public ::Mesh {
  public:
    DamagedMesh() {
        faces = &face_;
        verts = verts_;
        numTVerts = 1;
        tVerts = verts_;
        tvFace = &tvFace_;
        face_.v[1] = 2;
        face_.v[2] = 99;
        tvFace_.t[1] = 1;
        rVertex_.rFlags = 2;
    }

    int getNumFaces() const override { return faceCount; }
    int getNumVerts() const override { return vertexCount; }
    int getNumMaps() const override { return 3; }
    BOOL mapSupport(int /*channel*/) const override { return 1; }
    int getNumMapVerts(int /*channel*/) const override { return 5; }
    UVVert* mapVerts(int /*channel*/) const override { return nullptr; }
    ::TVFace* mapFaces(int /*channel*/) const override { return const_cast<::TVFace*>(&tvFace_); }
    void buildNormals() override {}
    ::RVertex* getRVertPtr(int vertex) override { return vertex == 0 ? &rVertex_ : nullptr; }
    ::Point3 getFaceNormal(int /*face*/) const override { return {0, 0, 1}; }

    int faceCount = 1;
    int vertexCount = 3;

  private:
    ::Face face_;
    ::TVFace tvFace_;
    ::Point3 verts_[3];
    ::RVertex rVertex_;
};

TEST(MaxMesh, KeepsIndicesInRange) {
    DamagedMesh damaged;
    MaxMesh mesh(damaged);
    ASSERT_EQ(mesh.faces().size(), 1U);
    EXPECT_EQ(mesh.faces()[0].v, (std::array<std::uint32_t, 3>{0, 2, 0}));
    ASSERT_EQ(mesh.mapFaces(1).size(), 1U);
    EXPECT_EQ(mesh.mapFaces(1)[0].t, (std::array<std::uint32_t, 3>{0, 0, 0}));
    EXPECT_TRUE(mesh.mapFaces(2).empty());
    EXPECT_TRUE(mesh.mapVerts(2).empty());
    EXPECT_TRUE(mesh.mapFaces(-1).empty());
}

TEST(MaxMesh, CountsNoNormalsThatAreMissing) {
    DamagedMesh damaged;
    MaxMesh mesh(damaged);
    EXPECT_EQ(mesh.getRVertex(0).rFlags, 0U);
    mesh.buildNormals();
    for (std::uint32_t vertex = 0; vertex < 4; ++vertex) {
        EXPECT_EQ(mesh.getRVertex(vertex).rFlags, 0U);
        EXPECT_TRUE(mesh.getRVertex(vertex).normals.empty());
    }
}

TEST(MaxMesh, IsEmptyWithoutVertices) {
    DamagedMesh damaged;
    damaged.vertexCount = 0;
    EXPECT_TRUE(MaxMesh(damaged).faces().empty());
    damaged.vertexCount = 3;
    damaged.verts = nullptr;
    EXPECT_TRUE(MaxMesh(damaged).faces().empty());
    DamagedMesh negative;
    negative.faceCount = -1;
    EXPECT_TRUE(MaxMesh(negative).faces().empty());
}

TEST(AcceleratorsOff, GivesThemBackAlsoWhenAnExceptionLeaves) {
    const AcceleratorSwitches before = acceleratorSwitches();
    try {
        const AcceleratorsOff keysAreOurs;
        EXPECT_EQ(acceleratorSwitches().off, before.off + 1);
        EXPECT_EQ(acceleratorSwitches().on, before.on);
        throw std::runtime_error("the dialog has failed");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(acceleratorSwitches().off, before.off + 1);
    }
    EXPECT_EQ(acceleratorSwitches().on, before.on + 1);
}

}  // namespace
}  // namespace velinor
