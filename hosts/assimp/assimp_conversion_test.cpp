// Scenes that no sound file gives, as a reader of the library may leave them after a damaged one.
#include "hosts/assimp/assimp_conversion.h"

#include <assimp/scene.h>

#include <limits>
#include <memory>
#include <string>

#include "hosts/assimp/assimp_test_support.h"

namespace velinor {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// A scene with a root, which is dropped, and below it a node "N" with a mesh of one triangle.
class AssimpConversion : public testing::Test {
  protected:
    AssimpConversion() {
        file_.path = "room.any";
        file_.shown = "room.any";
        file_.stem = "room";
        file_.format = FileFormat::fbx;
        scene_.mRootNode = new aiNode("RootNode");
        auto* child = new aiNode("N");
        scene_.mRootNode->addChildren(1, &child);
        node().mNumMeshes = 1;
        node().mMeshes = new unsigned[1]{0};
        scene_.mNumMeshes = 1;
        scene_.mMeshes = new aiMesh* [1] { triangle() };
    }

    static aiMesh* triangle() {
        auto mesh = std::make_unique<aiMesh>();
        mesh->mNumVertices = 3;
        mesh->mVertices = new aiVector3D[3]{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        mesh->mNumFaces = 1;
        mesh->mFaces = new aiFace[1];
        mesh->mFaces[0].mNumIndices = 3;
        mesh->mFaces[0].mIndices = new unsigned[3]{0, 1, 2};
        return mesh.release();
    }

    aiNode& node() { return *scene_.mRootNode->mChildren[0]; }
    aiMesh& mesh() { return *scene_.mMeshes[0]; }

    void dropMeshes() { node().mNumMeshes = 0; }

    // Gives "N" a light in place of its mesh.
    aiLight& light(aiLightSourceType type) {
        dropMeshes();
        scene_.mNumLights = 1;
        scene_.mLights = new aiLight* [1] { new aiLight };
        scene_.mLights[0]->mName = "N";
        scene_.mLights[0]->mType = type;
        scene_.mLights[0]->mColorDiffuse = {1, 1, 1};
        return *scene_.mLights[0];
    }

    // The snapshot, which must keep its rules, as the node "N".
    const SnapshotNode& convert() {
        NoProgress progress;
        read_.scene = snapshotOf(scene_, file_, {}, progress, read_.notes);
        EXPECT_EQ(faultOf(read_.scene), "");
        EXPECT_EQ(read_.scene, read_.scene) << "a number that is none";
        return read_.node(u"N");
    }

    std::string refusal() {
        try {
            convert();
        } catch (const SceneError& error) {
            return error.what();
        }
        return {};
    }

    bool isNoted(std::string_view text) const { return read_.isNoted("room.any", text); }

    SourceFile file_;
    aiScene scene_;
    ReadScene read_;
};

TEST_F(AssimpConversion, GivesWhatIsThere) {
    const SnapshotNode& node = convert();
    EXPECT_EQ(read_.meshOf(node).faces, (std::vector<FaceIndices>{{0, 1, 2}}));
    EXPECT_TRUE(read_.notes.notes().empty());
}

TEST_F(AssimpConversion, AFaceWithoutIndicesIsLeftOut) {
    delete[] mesh().mFaces[0].mIndices;
    mesh().mFaces[0].mIndices = nullptr;
    EXPECT_EQ(convert().object->type, host::IGameObject::IGAME_HELPER);
    EXPECT_TRUE(isNoted("1 mesh (\"N\") has 1 triangles with vertices that do not exist"));
    EXPECT_TRUE(isNoted("1 node (\"N\") has a mesh without triangles"));
}

TEST_F(AssimpConversion, IndicesOutOfRangeAreLeftOut) {
    mesh().mFaces[0].mIndices[2] = 3;
    EXPECT_FALSE(convert().object->mesh);
    EXPECT_TRUE(isNoted("triangles with vertices that do not exist"));
}

TEST_F(AssimpConversion, MaterialsBeyondTheLastIdShareItAndAreTold) {
    constexpr unsigned kCount = 65538;
    delete[] node().mMeshes;
    node().mNumMeshes = kCount;
    node().mMeshes = new unsigned[kCount];
    auto** const meshes = new aiMesh*[kCount];
    for (unsigned i = 0; i < kCount; ++i) {
        node().mMeshes[i] = i;
        meshes[i] = i == 0 ? &mesh() : triangle();
        meshes[i]->mMaterialIndex = i;
    }
    delete[] scene_.mMeshes;
    scene_.mMeshes = meshes;
    scene_.mNumMeshes = kCount;
    const SnapshotNode& node = convert();
    EXPECT_EQ(read_.meshOf(node).materialIds[1], 1);
    EXPECT_EQ(read_.meshOf(node).materialIds.at(kCount - 1), 65535);
    EXPECT_EQ(read_.materialOf(node).subMaterials.size(), 65536U);
    EXPECT_TRUE(isNoted("1 mesh (\"N\") has 2 materials beyond the 65536"));
}

TEST_F(AssimpConversion, MeshesThatAreOnlyCountedAreMissing) {
    const std::unique_ptr<aiMesh*[]> list(scene_.mMeshes);
    const std::unique_ptr<aiMesh> mesh(list[0]);
    scene_.mMeshes = nullptr;
    light(aiLightSource_POINT);
    EXPECT_EQ(convert().object->type, host::IGameObject::IGAME_LIGHT);
    node().mNumMeshes = 1;
    EXPECT_EQ(refusal(), "room.any: cannot be read: a node of it holds mesh 0, which does not exist");
}

TEST_F(AssimpConversion, AsManyFacesAsPromisedAreEnough) {
    file_.promisedFaces = 1;
    convert();
    EXPECT_TRUE(read_.notes.notes().empty());
}

TEST_F(AssimpConversion, FewerFacesThanPromisedAreTold) {
    file_.promisedFaces = 3;
    convert();
    EXPECT_TRUE(isNoted("it promises 3 faces, and 1 could be read"));
}

TEST_F(AssimpConversion, NoneOfThePromisedFacesIsAnError) {
    file_.promisedFaces = 3;
    mesh().mNumFaces = 0;
    EXPECT_EQ(refusal(),
              "room.any: the file is damaged or cut off: it promises 3 faces, and 0 could be read");
    mesh().mNumFaces = 1;
}

TEST_F(AssimpConversion, MaterialsThatAreOnlyCountedAreNone) {
    scene_.mNumMaterials = 3;
    EXPECT_FALSE(convert().material);
    scene_.mNumMaterials = 0;
}

TEST_F(AssimpConversion, MetadataWithoutAValueIsNotThere) {
    auto* const data = aiMetadata::Alloc(4);
    const char* const keys[] = {"IsNull", "Show", "UserProperties", "k"};
    const aiMetadataType types[] = {AI_BOOL, AI_BOOL, AI_AISTRING, AI_INT32};
    for (unsigned i = 0; i < 4; ++i) {
        data->mKeys[i] = keys[i];
        data->mValues[i].mType = types[i];
        data->mValues[i].mData = nullptr;
    }
    node().mMetaData = data;
    const SnapshotNode& node = convert();
    EXPECT_FALSE(node.hidden);
    EXPECT_TRUE(node.userProperties.empty());
}

TEST_F(AssimpConversion, AxesWithoutAValueAreTheUsualOnes) {
    scene_.mMetaData = aiMetadata::Alloc(1);
    scene_.mMetaData->mKeys[0] = "UpAxis";
    scene_.mMetaData->mValues[0].mType = AI_INT32;
    scene_.mMetaData->mValues[0].mData = nullptr;
    node().mTransformation.b4 = 1;
    expectAt(convert(), 0, 0, 1, 0);
}

TEST_F(AssimpConversion, TransformsThatAreNotFiniteAreLeftOut) {
    node().mTransformation.a4 = kNaN;
    expectAt(convert(), 0, 0, 0, 0);
    EXPECT_TRUE(isNoted("1 node (\"N\") has a transform"));
}

TEST_F(AssimpConversion, AColladaRootThatIsNoRotationIsTakenForYUp) {
    file_.format = FileFormat::collada;
    light(aiLightSource_POINT);
    for (const float strange : {kNaN, kInfinity, 0.F, 7.F}) {
        aiMatrix4x4& root = scene_.mRootNode->mTransformation;
        root = aiMatrix4x4();
        root.a2 = strange;
        root.b2 = 5;
        node().mTransformation.b4 = 1;
        expectAt(convert(), 0, 0, 1, 0);
    }
}

TEST_F(AssimpConversion, LightsHaveFiniteColoursAndPlaces) {
    aiLight& light = this->light(aiLightSource_SPOT);
    light.mColorDiffuse = {kNaN, kInfinity, 0.5F};
    light.mPosition = {kNaN, 0, 0};
    light.mDirection = {kInfinity, 0, 0};
    light.mUp = {kNaN, kNaN, kNaN};
    const SnapshotNode& node = convert();
    EXPECT_EQ(*node.object->light, (host::LightState{host::SPOT_LGT, {0, 0, 0.5F}, 1}));
    EXPECT_TRUE(node.worldTransform.IsFinite());
    expectAt(node, 0, 0, 0, 0);
}

TEST_F(AssimpConversion, LightsWithAVolumeBecomePoints) {
    light(aiLightSource_AREA);
    EXPECT_EQ(convert().object->light->type, host::OMNI_LGT);
    EXPECT_TRUE(isNoted("1 node (\"N\") has an area or volume light"));
}

TEST_F(AssimpConversion, LightsAndCamerasWithoutANodeAreTold) {
    light(aiLightSource_POINT).mName = "elsewhere";
    scene_.mNumCameras = 1;
    scene_.mCameras = new aiCamera* [1] { new aiCamera };
    scene_.mCameras[0]->mName = "nowhere";
    EXPECT_EQ(convert().object->type, host::IGameObject::IGAME_HELPER);
    EXPECT_TRUE(isNoted("1 light (\"elsewhere\") has no node"));
    EXPECT_TRUE(isNoted("1 camera (\"nowhere\") has no node"));
}

TEST_F(AssimpConversion, CamerasOf3dsFilesAreToldOf) {
    file_.format = FileFormat::threeDs;
    dropMeshes();
    scene_.mNumCameras = 1;
    scene_.mCameras = new aiCamera* [1] { new aiCamera };
    scene_.mCameras[0]->mName = "N";
    EXPECT_EQ(convert().object->type, host::IGameObject::IGAME_CAMERA);
    EXPECT_TRUE(isNoted("the roll of cameras"));
}

TEST_F(AssimpConversion, ABitmapNameWithALineEndMakesNoSecondLine) {
    scene_.mNumMaterials = 1;
    scene_.mMaterials = new aiMaterial* [1] { new aiMaterial };
    const aiString name("M");
    const aiString texture("*9\nx");
    scene_.mMaterials[0]->AddProperty(&name, "?mat.name", 0, 0);
    scene_.mMaterials[0]->AddProperty(&texture, "$tex.file", aiTextureType_DIFFUSE, 0);
    convert();
    for (const ImportNote& note : read_.notes.notes())
        EXPECT_EQ(note.text.find('\n'), std::string::npos) << note.text;
}

TEST_F(AssimpConversion, AHoleInTheTreeIsRefused) {
    delete scene_.mRootNode->mChildren[0];
    scene_.mRootNode->mChildren[0] = nullptr;
    EXPECT_EQ(refusal(), "room.any: cannot be read: the file's node tree has a hole");
}

}  // namespace
}  // namespace velinor
