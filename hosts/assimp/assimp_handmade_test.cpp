// Small scenes written by hand, one fact each.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "hosts/assimp/assimp_test_support.h"

namespace velinor {
namespace {

using host::IGameObject;

std::string base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8U | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= count ? kDigits[group >> (18 - 6 * i) & 63U] : '=';
    }
    return text;
}

// A glTF file with the given members besides its asset. Buffer 0 holds the points (0,0,0) (1,0,0) (0,1,0)
// (0,0,1) as floats (view 0) and the indices 0 1 2 0 2 3 as 16-bit integers (view 1).
std::string gltf(const std::string& members) {
    std::string bytes;
    for (const float value : {0.F, 0.F, 0.F, 1.F, 0.F, 0.F, 0.F, 1.F, 0.F, 0.F, 0.F, 1.F}) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    for (const std::uint16_t value : {0, 1, 2, 0, 2, 3}) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":60,"uri":"data:application/octet-stream;base64,)" +
           base64(bytes) + R"("}],"bufferViews":[{"buffer":0,"byteLength":48},{"buffer":0,"byteOffset":48,)" +
           R"("byteLength":12}],"accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3",)" +
           R"("min":[0,0,0],"max":[1,1,1]},{"bufferView":1,"componentType":5123,"count":3,"type":"SCALAR"},)" +
           R"({"bufferView":1,"byteOffset":6,"componentType":5123,"count":3,"type":"SCALAR"}],)" + members +
           "}";
}

constexpr const char* kOneMesh =
    R"("meshes":[{"name":"M","primitives":[{"attributes":{"POSITION":0},"indices":1}]}],)";

// An ASCII FBX file, Z-up as 3ds Max writes it, with the given objects and connections.
std::string fbx(const std::string& objects, const std::string& connections) {
    return std::string(
               "; FBX 7.4.0 project file\nFBXHeaderExtension:  {\n\tFBXHeaderVersion: 1003\n"
               "\tFBXVersion: 7400\n}\nGlobalSettings:  {\n\tVersion: 1000\n\tProperties70:  {\n"
               "\t\tP: \"UpAxis\", \"int\", \"Integer\", \"\",2\n"
               "\t\tP: \"UpAxisSign\", \"int\", \"Integer\", \"\",1\n"
               "\t\tP: \"FrontAxis\", \"int\", \"Integer\", \"\",1\n"
               "\t\tP: \"FrontAxisSign\", \"int\", \"Integer\", \"\",-1\n"
               "\t\tP: \"CoordAxis\", \"int\", \"Integer\", \"\",0\n"
               "\t\tP: \"CoordAxisSign\", \"int\", \"Integer\", \"\",1\n\t}\n}\n"
               "Definitions:  {\n\tVersion: 100\n\tCount: 2\n}\nObjects:  {\n") +
           objects + "}\nConnections:  {\n" + connections + "}\n";
}

class AssimpFiles : public testing::Test {
  protected:
    ReadScene read(const std::string& name, const std::string& text, const AssimpOptions& options = {}) {
        return readScene(folder_.write(name, text), options);
    }

    ScratchFolder folder_;
};

TEST_F(AssimpFiles, GltfExtrasThatAreIntegersBecomeUserProperties) {
    const ReadScene read =
        this->read("a.gltf", gltf(R"("scene":0,"scenes":[{"nodes":[0,1]}],"nodes":[{"name":"other"},
        {"name":"A","extras":{"qv_wt_res_w":1024,"minus":-4,"yes":true,"whole":7.0,"real":2.5,"text":"5",
        "list":[1,2],"object":{"k":1},"large":5000000000,"none":null}}])"));
    EXPECT_EQ(read.node(u"A").userProperties,
              (std::map<std::u16string, std::int32_t>{
                  {u"qv_wt_res_w", 1024}, {u"minus", -4}, {u"yes", 1}, {u"whole", 7}}));
    EXPECT_TRUE(read.node(u"other").userProperties.empty());
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"),
                             "1 node (\"A\") has 5 user properties that are no 32-bit integers"));
}

TEST_F(AssimpFiles, FbxUserPropertiesOfMaxAreTheLinesThatAreIntegers) {
    const ReadScene read = this->read(
        "a.fbx",
        fbx("\tNodeAttribute: 300, \"NodeAttribute::\", \"Null\" {\n\t\tTypeFlags: \"Null\"\n\t}\n"
            "\tModel: 100, \"Model::Dummy &quot;A&quot; [c: 2, d: x]\", \"Null\" {\n\t\tVersion: 232\n"
            "\t\tProperties70:  {\n"
            "\t\t\tP: \"UDP3DSMAX\", \"KString\", \"\", \"U\", \"qv_wt_res_w = 1024&cr;&lf;"
            "qv_wt_res_h=768&cr;&lf;text = hello&cr;&lf;minus = -3&cr;&lf;real = 1.5&cr;&lf;\"\n"
            "\t\t\tP: \"Show\", \"bool\", \"\", \"\",0\n"
            "\t\t\tP: \"Mine\", \"int\", \"Integer\", \"U\",17\n"
            "\t\t\tP: \"MaxHandle\", \"int\", \"Integer\", \"U\",5\n"
            "\t\t\tP: \"mr displacement max displace\", \"Number\", \"\", \"AU\",20\n"
            "\t\t\tP: \"AxisLen\", \"double\", \"Number\", \"\",10\n"
            "\t\t\tP: \"MinDampRangeX\", \"double\", \"Number\", \"\",0\n"
            "\t\t\tP: \"MaxDampStrengthZ\", \"double\", \"Number\", \"\",0\n"
            "\t\t\tP: \"RotationStiffnessY\", \"double\", \"Number\", \"\",0\n"
            "\t\t\tP: \"PreferedAngleY\", \"double\", \"Number\", \"\",0\n"
            "\t\t\tP: \"Lcl Translation\", \"Lcl Translation\", \"\", \"A\",1,2,3\n"
            "\t\t}\n\t}\n"
            "\tModel: 101, \"Model::Bone\", \"LimbNode\" {\n\t\tVersion: 232\n\t}\n",
            "\tC: \"OO\",100,0\n\tC: \"OO\",300,100\n\tC: \"OO\",101,100\n"));
    const SnapshotNode& dummy = read.node(u"Dummy \"A\" [c: 2, d: x]");
    EXPECT_EQ(dummy.userProperties,
              (std::map<std::u16string, std::int32_t>{
                  {u"qv_wt_res_w", 1024}, {u"qv_wt_res_h", 768}, {u"minus", -3}, {u"Mine", 17}}));
    EXPECT_TRUE(dummy.hidden);
    EXPECT_EQ(dummy.object->type, IGameObject::IGAME_HELPER);
    expectAt(dummy, 1, 2, 3, 0);
    expectUnrotated(dummy);
    EXPECT_EQ(read.type(u"Bone"), IGameObject::IGAME_BONE);
    EXPECT_FALSE(read.node(u"Bone").hidden);
    EXPECT_EQ(dummy.children, (std::vector<SnapshotRef>{1}));
    EXPECT_EQ(read.scene.roots, (std::vector<SnapshotRef>{0}));
}

// A model of an ASCII FBX file with the given lines of properties.
std::string fbxModel(int id, const std::string& name, const std::string& kind,
                     const std::string& properties) {
    return "\tModel: " + std::to_string(id) + ", \"Model::" + name + "\", \"" + kind +
           "\" {\n\t\tVersion: 232\n\t\tProperties70:  {\n" + properties + "\t\t}\n\t}\n";
}

// A triangle with two UV sets, of which the first in the file is the host's channel 3.
std::string fbxTriangle(int id) {
    const auto uvSet = [](int index, const char* name, const char* values) {
        return "\t\tLayerElementUV: " + std::to_string(index) + " {\n\t\t\tVersion: 101\n\t\t\tName: \"" +
               name +
               "\"\n\t\t\tMappingInformationType: \"ByPolygonVertex\"\n\t\t\tReferenceInformationType: "
               "\"Direct\"\n" +
               "\t\t\tUV: *6 {\n\t\t\t\ta: " + values + "\n\t\t\t}\n\t\t}\n";
    };
    const auto layer = [](int index) {
        const std::string number = std::to_string(index);
        return "\t\tLayer: " + number + " {\n\t\t\tVersion: 100\n\t\t\tLayerElement:  {\n\t\t\t\tType: " +
               "\"LayerElementUV\"\n\t\t\t\tTypedIndex: " + number + "\n\t\t\t}\n\t\t}\n";
    };
    return "\tGeometry: " + std::to_string(id) +
           ", \"Geometry::\", \"Mesh\" {\n\t\tVertices: *9 {\n\t\t\ta: 0,0,0,1,0,0,0,1,0\n\t\t}\n" +
           "\t\tPolygonVertexIndex: *3 {\n\t\t\ta: 0,1,-3\n\t\t}\n\t\tGeometryVersion: 124\n" +
           uvSet(0, "UVChannel_3", "0.25,0.5,0.25,0.5,0.25,0.5") + uvSet(1, "UVChannel_1", "1,0,1,0,1,0") +
           layer(0) + layer(1) + "\t}\n";
}

std::string fbxVector(const char* name, const char* values) {
    return std::string("\t\t\tP: \"") + name + "\", \"Vector3D\", \"Vector\", \"\"," + values + "\n";
}

TEST_F(AssimpFiles, TheObjectOffsetOfFbxMovesTheObjectAndNotTheChildren) {
    const ReadScene read = this->read(
        "a.fbx",
        fbx(fbxTriangle(200) +
                fbxModel(100, "Parent", "Mesh",
                         fbxVector("Lcl Translation", "10,0,0") + fbxVector("PreRotation", "0,0,90") +
                             fbxVector("GeometricTranslation", "0,0,5")) +
                fbxModel(101, "Child", "Mesh", fbxVector("Lcl Translation", "1,0,0")),
            "\tC: \"OO\",100,0\n\tC: \"OO\",200,100\n\tC: \"OO\",101,100\n\tC: \"OO\",200,101\n"));
    ASSERT_EQ(read.scene.nodes.size(), 2U);
    EXPECT_EQ(faultOf(read.scene), "");
    const SnapshotNode& parent = read.node(u"Parent");
    expectAt(parent, 10, 0, 5, 1e-6F);
    expectRow(parent.worldTransform[0], 0, 1, 0, 1e-6F);
    EXPECT_EQ(parent.worldTransform[0][0], 0) << "noise of the rotation by 90 degrees";
    EXPECT_EQ(parent.children, (std::vector<SnapshotRef>{1}));
    expectAt(read.node(u"Child"), 10, 1, 0, 1e-6F);
    ASSERT_TRUE(parent.instances);
    EXPECT_EQ(parent.instances->nodes(), (std::vector<SnapshotRef>{1, 0}));
    EXPECT_FALSE(parent.material);
}

TEST_F(AssimpFiles, UvSetsOfMaxFbxGoToTheChannelsOfTheirNames) {
    const ReadScene read = this->read("a.fbx", fbx(fbxTriangle(200) + fbxModel(100, "A", "Mesh", ""),
                                                   "\tC: \"OO\",100,0\n\tC: \"OO\",200,100\n"));
    const SnapshotMesh& mesh = read.meshOf(read.node(u"A"));
    ASSERT_EQ(mesh.maps.size(), 2U);
    EXPECT_EQ(mesh.maps.at(3).vertices.at(0), (host::Point3{0.25F, 0.5F, 0}));
    EXPECT_EQ(mesh.maps.at(1).vertices.at(0), (host::Point3{1, 0, 0}));
}

TEST_F(AssimpFiles, PivotsOfALongNameAreNoNodes) {
    const std::string name(1012, 'N');
    const ReadScene read = this->read(
        "a.fbx",
        fbx(fbxTriangle(200) +
                fbxModel(100, name, "Mesh",
                         fbxVector("PreRotation", "0,0,90") + fbxVector("Lcl Translation", "1,2,3")) +
                fbxModel(101, "", "LimbNode", ""),
            "\tC: \"OO\",100,0\n\tC: \"OO\",200,100\n\tC: \"OO\",101,100\n"));
    ASSERT_EQ(read.scene.nodes.size(), 2U);
    expectAt(read.node(toUtf16Lossy(name)), 1, 2, 3, 1e-6F);
    EXPECT_EQ(read.scene.roots, (std::vector<SnapshotRef>{0}));
    EXPECT_EQ(read.scene.nodes[1].name, u"") << "a node of the file that has no name";
}

TEST_F(AssimpFiles, FbxLightsOfOneNameStayApart) {
    const auto light = [](int id, int type, const char* intensity) {
        return "\tNodeAttribute: " + std::to_string(id) +
               ", \"NodeAttribute::\", \"Light\" {\n\t\tProperties70:  {\n\t\t\tP: \"LightType\", \"enum\", "
               "\"\", \"\"," +
               std::to_string(type) +
               "\n\t\t\tP: \"Color\", \"Color\", \"\", \"A\",1,0.5,0\n\t\t\tP: \"Intensity\", " +
               "\"Number\", \"\", \"A\"," + intensity + "\n\t\t}\n\t\tTypeFlags: \"Light\"\n\t}\n";
    };
    // The outer one is left after the inner one.
    const ReadScene read = this->read(
        "a.fbx", fbx(light(300, 1, "50") + light(301, 2, "300") +
                         fbxModel(100, "L", "Light", fbxVector("Lcl Translation", "1,2,3")) +
                         fbxModel(101, "L", "Light", fbxVector("Lcl Translation", "0,0,1")),
                     "\tC: \"OO\",100,0\n\tC: \"OO\",101,100\n\tC: \"OO\",300,100\n\tC: \"OO\",301,101\n"));
    ASSERT_EQ(read.countOfType(IGameObject::IGAME_LIGHT), 2U);
    EXPECT_EQ(*read.node(u"L", 0).object->light, (host::LightState{host::DIRECT_LGT, {0.5F, 0.25F, 0}, 1}));
    EXPECT_EQ(*read.node(u"L", 1).object->light, (host::LightState{host::SPOT_LGT, {1, 0.5F, 0}, 1}));
    expectAt(read.node(u"L", 1), 1, 2, 4, 1e-6F);
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.fbx"), "1 node (\"L\") has a light brighter than"));
    // FBX lights shine along their -Y, the host's along the -Z of their matrix.
    expectRow(read.node(u"L", 0).worldTransform[2], 0, 1, 0, 1e-6F);
    expectRow(read.node(u"L", 0).worldTransform[1], 0, 0, -1, 1e-6F);
}

TEST_F(AssimpFiles, AnEmptyOfFbxTakesNoLightOrCameraOfItsName) {
    const auto attribute = [](int id, const std::string& kind) {
        return "\tNodeAttribute: " + std::to_string(id) + ", \"NodeAttribute::\", \"" + kind +
               "\" {\n\t\tProperties70:  {\n\t\t}\n\t\tTypeFlags: \"" + kind + "\"\n\t}\n";
    };
    const ReadScene read = this->read(
        "a.fbx", fbx(attribute(300, "Null") + attribute(301, "Light") + attribute(302, "Camera") +
                         fbxModel(100, "L", "Null", fbxVector("Lcl Translation", "1,2,3")) +
                         fbxModel(101, "L", "Light", fbxVector("Lcl Translation", "10,20,30")) +
                         fbxModel(102, "C", "Null", "") +
                         fbxModel(103, "C", "Camera", fbxVector("Lcl Translation", "7,8,9")),
                     "\tC: \"OO\",100,0\n\tC: \"OO\",101,0\n\tC: \"OO\",102,0\n\tC: \"OO\",103,0\n"
                     "\tC: \"OO\",300,100\n\tC: \"OO\",301,101\n\tC: \"OO\",300,102\n\tC: \"OO\",302,103\n"));
    ASSERT_EQ(read.scene.nodes.size(), 4U);
    EXPECT_EQ(read.scene.nodes[0].object->type, IGameObject::IGAME_HELPER);
    EXPECT_EQ(read.scene.nodes[1].object->type, IGameObject::IGAME_LIGHT);
    EXPECT_EQ(read.scene.nodes[2].object->type, IGameObject::IGAME_HELPER);
    EXPECT_EQ(read.scene.nodes[3].object->type, IGameObject::IGAME_CAMERA);
    expectAt(read.scene.nodes[1], 10, 20, 30, 1e-6F);
}

TEST_F(AssimpFiles, GltfVisibilityHidesANode) {
    const ReadScene read = this->read(
        "a.gltf",
        gltf(R"("extensionsUsed":["KHR_node_visibility"],"scene":0,"scenes":[{"nodes":[0,1,2]}],"nodes":[
        {"name":"A","extensions":{"KHR_node_visibility":{"visible":false}}},
        {"name":"B","extensions":{"KHR_node_visibility":{"visible":true}}},{"name":"C"}])"));
    EXPECT_TRUE(read.node(u"A").hidden);
    EXPECT_FALSE(read.node(u"B").hidden);
    EXPECT_FALSE(read.node(u"C").hidden);
    EXPECT_TRUE(read.node(u"A").userProperties.empty());
}

TEST_F(AssimpFiles, WhatIsBelowAHiddenNodeOfGltfIsHiddenToo) {
    const ReadScene read = this->read(
        "a.gltf",
        gltf(R"("extensionsUsed":["KHR_node_visibility"],"scene":0,"scenes":[{"nodes":[0]}],"nodes":[
        {"name":"A","children":[1,2]},
        {"name":"B","children":[3],"extensions":{"KHR_node_visibility":{"visible":false}}},{"name":"C"},
        {"name":"D","extensions":{"KHR_node_visibility":{"visible":true}}}])"));
    EXPECT_FALSE(read.node(u"A").hidden);
    EXPECT_FALSE(read.node(u"C").hidden);
    EXPECT_TRUE(read.node(u"B").hidden);
    EXPECT_TRUE(read.node(u"D").hidden);
}

TEST_F(AssimpFiles, GltfNodesWithoutNamesAreCalledByTheirNumbers) {
    const ReadScene read =
        this->read("a.gltf", gltf(R"("scene":0,"scenes":[{"nodes":[0,1]}],"nodes":[{},{"name":""}])"));
    ASSERT_EQ(read.scene.nodes.size(), 2U);
    EXPECT_EQ(read.scene.nodes[0].name, u"nodes[0]");
    EXPECT_EQ(read.scene.nodes[1].name, u"nodes[1]");
}

TEST_F(AssimpFiles, AUserPropertyThatASnapshotCannotHoldIsTold) {
    const ReadScene read = this->read(
        "a.gltf",
        gltf(R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"A","extras":{"extras":1,"k":2}}])"));
    EXPECT_EQ(faultOf(read.scene), "");
    EXPECT_EQ(read.node(u"A").userProperties, (std::map<std::u16string, std::int32_t>{{u"k", 2}}));
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"), "a user property \"extras\""));
}

TEST_F(AssimpFiles, ATransformThatIsNotFiniteIsLeftOutAndTold) {
    const ReadScene read = this->read("a.gltf", gltf(R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[
        {"name":"A","translation":[1e39,0,0],"children":[1,2]},{"name":"B","translation":[1,0,0]},
        {"name":"C","translation":[3e38,0,0],"scale":[3e38,1,1],"children":[3]},
        {"name":"D","translation":[3e38,0,0]}])"));
    EXPECT_EQ(faultOf(read.scene), "");
    for (const SnapshotNode& node : read.scene.nodes)
        EXPECT_TRUE(node.worldTransform.IsFinite()) << toUtf8(node.name);
    expectAt(read.node(u"B"), 1, 0, 0, 0);
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"), "2 nodes (\"A\", \"D\") have a transform"));
}

TEST_F(AssimpFiles, GltfIsTurnedUprightWithItsVertices) {
    const ReadScene read =
        this->read("a.gltf", gltf(std::string(kOneMesh) + R"("scene":0,"scenes":[{"nodes":[0,1]}],
        "nodes":[{"name":"A [b: 1]","mesh":0,"translation":[1,2,3]},{"name":"B"}])"));
    const SnapshotNode& node = read.node(u"A [b: 1]");
    expectAt(node, 1, -3, 2, 0);
    expectUnrotated(node);
    const SnapshotMesh& mesh = read.meshOf(node);
    EXPECT_EQ(mesh.faces, (std::vector<FaceIndices>{{0, 1, 2}}));
    ASSERT_GE(mesh.vertices.size(), 3U);
    EXPECT_EQ(mesh.vertices[1], (host::Point3{1, 0, 0}));
    EXPECT_EQ(mesh.vertices[2], (host::Point3{0, 0, 1}));
    EXPECT_TRUE(mesh.specifiedNormals.empty());
    EXPECT_FALSE(node.material) << "a primitive without a material";
}

TEST_F(AssimpFiles, ASingleRootNodeOfGltfIsANode) {
    const ReadScene read =
        this->read("a.gltf", gltf(std::string(kOneMesh) + R"("scene":0,"scenes":[{"nodes":[0]}],
        "nodes":[{"name":"Only","children":[1],"translation":[1,2,3]},{"name":"Below","mesh":0}])"));
    ASSERT_EQ(read.scene.nodes.size(), 2U);
    expectAt(read.node(u"Only"), 1, -3, 2, 0);
    expectAt(read.node(u"Below"), 1, -3, 2, 0);
    EXPECT_EQ(read.node(u"Only").children, (std::vector<SnapshotRef>{1}));
}

TEST_F(AssimpFiles, OneNodeWithANameIsAScene) {
    const ReadScene read =
        this->read("a.gltf", gltf(R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"A"}])"));
    ASSERT_EQ(read.scene.nodes.size(), 1U);
    EXPECT_EQ(read.type(u"A"), IGameObject::IGAME_HELPER);
}

TEST_F(AssimpFiles, AMirroredNodeKeepsItsObject) {
    const ReadScene read =
        this->read("a.gltf", gltf(std::string(kOneMesh) + R"("scene":0,"scenes":[{"nodes":[0,1]}],
        "nodes":[{"name":"A","mesh":0,"scale":[-1,1,1]},{"name":"B"}])"));
    EXPECT_TRUE(read.node(u"A").worldTransform.IsMirrored());
    expectRow(read.node(u"A").worldTransform[0], -1, 0, 0, 0);
    EXPECT_EQ(read.meshOf(read.node(u"A")).faces, (std::vector<FaceIndices>{{0, 1, 2}}));
}

TEST_F(AssimpFiles, NodesOfOneMeshAreInstancesAndTheFirstIsMaster) {
    const ReadScene read =
        this->read("a.gltf", gltf(std::string(kOneMesh) + R"("scene":0,"scenes":[{"nodes":[0,1,3]}],
        "nodes":[{"name":"A","mesh":0},{"name":"H","children":[2]},{"name":"B","mesh":0},{"name":"C","mesh":0}])"));
    ASSERT_EQ(read.scene.meshes.size(), 1U);
    const std::vector<SnapshotRef> group{2, 3, 0};
    for (const char16_t* name : {u"A", u"B", u"C"}) {
        ASSERT_TRUE(read.node(name).instances) << toUtf8(name);
        EXPECT_EQ(read.node(name).instances->nodes(), group) << toUtf8(name);
    }
    EXPECT_FALSE(read.node(u"H").instances);
}

TEST_F(AssimpFiles, PrimitivesOfTwoMaterialsBecomeOneMeshWithTwoIds) {
    const ReadScene read =
        this->read("a.gltf", gltf(R"("materials":[{"name":"red"},{"name":"blue"}],"meshes":[
        {"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":1},
                       {"attributes":{"POSITION":0,"NORMAL":0,"TEXCOORD_0":0},"indices":2,"material":0}]}],
        "scene":0,"scenes":[{"nodes":[0,1]}],"nodes":[{"name":"A","mesh":0},{"name":"B"}])"));
    const SnapshotNode& node = read.node(u"A");
    const SnapshotMesh& mesh = read.meshOf(node);
    EXPECT_EQ(mesh.materialIds, (std::vector<std::uint16_t>{0, 1}));
    ASSERT_EQ(mesh.faces.size(), 2U);
    EXPECT_EQ(mesh.faces[0], (FaceIndices{0, 1, 2}));
    EXPECT_EQ(mesh.vertices[mesh.faces[1][2]], (host::Point3{0, -1, 0})) << "the file's (0, 0, 1)";
    const SnapshotMaterial& multi = read.materialOf(node);
    ASSERT_EQ(multi.subMaterials.size(), 2U);
    EXPECT_EQ(read.scene.materials[*multi.subMaterials[0].material].name, u"blue");
    EXPECT_EQ(read.scene.materials[*multi.subMaterials[1].material].name, u"red");
    EXPECT_EQ(read.scene.materials[*multi.subMaterials[0].material].className, u"Physical Material");
}

TEST_F(AssimpFiles, PartsWithoutNormalsOrUvSetsStayWithout) {
    // The second part has normals (1, 0, 0) and a UV set; the first has neither.
    const ReadScene read = this->read("a.obj",
                                      "mtllib a.mtl\no A\nv 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nvt 0.25 0.75\n"
                                      "vn 2 0 0\nusemtl m\nf 1 2 3\nusemtl n\nf 1/1/1 3/1/1 4/1/1\n");
    const SnapshotMesh& mesh = read.meshOf(read.node(u"A"));
    ASSERT_EQ(mesh.faces.size(), 2U);
    EXPECT_TRUE(mesh.specifiedNormals.empty());
    ASSERT_EQ(mesh.renderVertices.size(), mesh.vertices.size());
    EXPECT_FALSE(mesh.renderVertices[mesh.faces[0][0]]);
    const auto& specified = mesh.renderVertices[mesh.faces[1][0]];
    ASSERT_TRUE(specified && std::holds_alternative<host::Point3>(*specified));
    EXPECT_EQ(std::get<host::Point3>(*specified), (host::Point3{1, 0, 0}));
    const SnapshotMapChannel& channel = mesh.maps.at(1);
    EXPECT_EQ(channel.vertices[channel.faces[0][1]], host::Point3());
    EXPECT_EQ(channel.vertices[channel.faces[1][1]], (host::Point3{0.25F, 0.75F, 0}));
}

TEST_F(AssimpFiles, ObjIsYUpUnlessTold) {
    const std::string text = "o A\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    const ReadScene usual = read("a.obj", text);
    EXPECT_EQ(usual.meshOf(usual.node(u"A")).vertices[2], (host::Point3{0, 0, 1}));
    const ReadScene told = read("a.obj", text, {UpAxis::z});
    EXPECT_EQ(told.meshOf(told.node(u"A")).vertices[2], (host::Point3{0, 1, 0}));
    expectUnrotated(told.node(u"A"));
    EXPECT_FALSE(told.node(u"A").material);
}

TEST_F(AssimpFiles, AFormatThatStatesItsAxisKeepsIt) {
    const ReadScene read = this->read(
        "a.gltf",
        gltf(
            R"("scene":0,"scenes":[{"nodes":[0,1]}],"nodes":[{"name":"A","translation":[0,1,0]},{"name":"B"}])"),
        {UpAxis::z});
    expectAt(read.node(u"A"), 0, 0, 1, 0);
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"), "up axis"));
}

TEST_F(AssimpFiles, PointsAndLinesOnlyAreASpline) {
    const ReadScene read = this->read("a.gltf", gltf(R"("meshes":[
        {"primitives":[{"attributes":{"POSITION":0},"mode":0}]},
        {"primitives":[{"attributes":{"POSITION":0},"mode":3}]},
        {"primitives":[{"attributes":{"POSITION":0},"mode":3},{"attributes":{"POSITION":0},"indices":1}]}],
        "scene":0,"scenes":[{"nodes":[0,1,2]}],
        "nodes":[{"name":"points","mesh":0},{"name":"lines","mesh":1},{"name":"mixed","mesh":2}])"));
    EXPECT_EQ(read.type(u"points"), IGameObject::IGAME_SPLINE);
    EXPECT_EQ(read.type(u"lines"), IGameObject::IGAME_SPLINE);
    ASSERT_TRUE(read.node(u"lines").object->boundingBox);
    EXPECT_EQ(read.node(u"lines").object->boundingBox->pmin, (host::Point3{0, -1, 0}));
    EXPECT_EQ(read.node(u"lines").object->boundingBox->pmax, (host::Point3{1, 0, 1}));
    EXPECT_EQ(read.type(u"mixed"), IGameObject::IGAME_MESH);
    EXPECT_EQ(read.triangles(), 1U);
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"),
                             "1 mesh (\"mixed\") has 3 lines or points beside triangles"));
}

TEST_F(AssimpFiles, TrianglesWithACornerTwiceAreLeftOutAndCounted) {
    // Six indices of one byte, 0 1 2 0 3 3, in a buffer of their own.
    std::string text =
        gltf(std::string(kOneMesh) +
             R"("scene":0,"scenes":[{"nodes":[0,1]}],"nodes":[{"name":"A","mesh":0},{"name":"B"}])");
    const std::string bytes = base64(std::string_view("\0\1\2\0\3\3", 6));
    const auto insert = [&text](std::string_view before, const std::string& added) {
        text.insert(text.find(before), added);
    };
    insert(R"(],"bufferViews")",
           R"(,{"byteLength":6,"uri":"data:application/octet-stream;base64,)" + bytes + R"("})");
    insert(R"(],"accessors")", R"(,{"buffer":1,"byteLength":6})");
    insert(R"(],"meshes")", R"(,{"bufferView":2,"componentType":5121,"count":6,"type":"SCALAR"})");
    text.replace(text.find(R"("indices":1)"), 11, R"("indices":3)");
    const ReadScene read = this->read("a.gltf", text);
    EXPECT_EQ(read.meshOf(read.node(u"A")).faces, (std::vector<FaceIndices>{{0, 1, 2}}));
    EXPECT_EQ(read.meshOf(read.node(u"A")).vertices.size(), 3U) << "the vertex that no triangle uses";
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"),
                             "1 mesh (\"A\") has 1 triangles with a corner twice"));
}

TEST_F(AssimpFiles, GltfLightsHaveTypesColoursAndOneNodeOrMore) {
    const ReadScene read = this->read(
        "a.gltf",
        gltf(R"("extensionsUsed":["KHR_lights_punctual"],"extensions":{"KHR_lights_punctual":{"lights":[
        {"type":"point","color":[1,0.5,0.25],"intensity":500},{"type":"directional","color":[0.5,0.25,0]},
        {"type":"spot","spot":{},"intensity":10}]}},"scene":0,"scenes":[{"nodes":[0,1,4]}],"nodes":[
        {"name":"spot","children":[2,3],"extensions":{"KHR_lights_punctual":{"light":2}}},
        {"name":"none"},{"name":"sun","extensions":{"KHR_lights_punctual":{"light":1}}},
        {"name":"same sun","extensions":{"KHR_lights_punctual":{"light":1}}},
        {"name":"point","translation":[1,2,3],"extensions":{"KHR_lights_punctual":{"light":0}}}])"));
    const auto light = [&read](const char16_t* name) {
        const SnapshotNode& node = read.node(name);
        return node.object && node.object->light ? *node.object->light : host::LightState{-1, {}, 0};
    };
    EXPECT_EQ(light(u"point"), (host::LightState{host::OMNI_LGT, {1, 0.5F, 0.25F}, 1}));
    EXPECT_EQ(light(u"spot"), (host::LightState{host::SPOT_LGT, {1, 1, 1}, 1}));
    EXPECT_EQ(light(u"sun"), (host::LightState{host::DIRECT_LGT, {0.5F, 0.25F, 0}, 1}))
        << "not brighter than 1";
    EXPECT_EQ(light(u"same sun"), light(u"sun"));
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"),
                             "2 nodes (\"spot\", \"point\") have a light brighter than"));
    EXPECT_EQ(read.type(u"none"), IGameObject::IGAME_HELPER);
    expectAt(read.node(u"point"), 1, -3, 2, 0);
    // glTF lights shine along their -Z, which is host +Y; the host's along the -Z of their matrix.
    expectRow(read.node(u"sun").worldTransform[2], 0, -1, 0, 0);
}

TEST_F(AssimpFiles, AnUnturnedGltfCameraLooksAlongHostYUpright) {
    const ReadScene read = this->read("a.gltf", gltf(R"("cameras":[{"type":"perspective","perspective":
        {"yfov":0.7,"znear":0.1}}],"scene":0,"scenes":[{"nodes":[0,1]}],
        "nodes":[{"name":"C","camera":0,"translation":[1,2,3]},{"name":"B"}])"));
    ASSERT_EQ(read.type(u"C"), IGameObject::IGAME_CAMERA);
    const host::GMatrix& world = read.node(u"C").worldTransform;
    expectRow(world[0], 1, 0, 0, 0);
    expectRow(world[1], 0, 0, 1, 0);
    expectRow(world[2], 0, -1, 0, 0);
    expectRow(world[3], 1, -3, 2, 0);
}

TEST_F(AssimpFiles, AGltfLightBesideAMeshIsTold) {
    const ReadScene read = this->read(
        "a.gltf", gltf(std::string(kOneMesh) + R"("extensionsUsed":["KHR_lights_punctual"],"extensions":
        {"KHR_lights_punctual":{"lights":[{"type":"point"}]}},"scene":0,"scenes":[{"nodes":[0]}],
        "nodes":[{"name":"A","mesh":0,"extensions":{"KHR_lights_punctual":{"light":0}}}])"));
    EXPECT_EQ(read.type(u"A"), IGameObject::IGAME_MESH);
    EXPECT_TRUE(
        read.isNoted(utf8Path(folder_.path() / "a.gltf"), "1 node (\"A\") has a light beside a mesh"));
}

TEST_F(AssimpFiles, WhatMeshesHaveBeyondTrianglesIsToldByTheirNodes) {
    const ReadScene read = this->read("a.gltf", gltf(R"("meshes":[{"primitives":[
        {"attributes":{"POSITION":0,"COLOR_0":0},"indices":1,"targets":[{"POSITION":0}]},
        {"attributes":{"POSITION":0,"COLOR_0":0},"indices":2}]}],"scene":0,"scenes":[{"nodes":[0,1]}],
        "nodes":[{"name":"A","mesh":0},{"name":"B","mesh":0}])"));
    const std::string file = utf8Path(folder_.path() / "a.gltf");
    EXPECT_TRUE(read.isNoted(file, "1 mesh (\"A\") has vertex colours"));
    EXPECT_TRUE(read.isNoted(file, "1 mesh (\"A\") has morph targets"));
    EXPECT_EQ(read.notes.notes().size(), 2U);
}

TEST_F(AssimpFiles, GltfMaterialsWithTwoSidesOrWithoutShadingAreTold) {
    const ReadScene read = this->read("a.gltf", gltf(R"("extensionsUsed":["KHR_materials_unlit"],"materials":[
        {"name":"two","doubleSided":true},{"name":"flat","extensions":{"KHR_materials_unlit":{}}},{"name":"plain"}],
        "meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":0},
        {"attributes":{"POSITION":0},"indices":1,"material":1},{"attributes":{"POSITION":0},"indices":1,"material":2}]}],
        "scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"A","mesh":0}])"));
    const std::string file = utf8Path(folder_.path() / "a.gltf");
    EXPECT_TRUE(read.isNoted(file, "1 material (\"two\") has two sides"));
    EXPECT_TRUE(read.isNoted(file, "1 material (\"flat\") has no shading"));
}

TEST_F(AssimpFiles, WhatTheLibraryDoesNotReadOfAnFbxFileIsTold) {
    const ReadScene read = this->read(
        "a.fbx",
        fbx("\tAnimationCurve: 9, \"AnimCurve::\", \"\" {\n\t}\n"
            "\tCollectionExclusive: 7, \"DisplayLayer::a\", \"DisplayLayer\" {\n\t}\n" +
                fbxModel(100, "A", "Null", "\t\t\tP: \"Visibility\", \"Visibility\", \"\", \"A\",0\n"),
            "\tC: \"OO\",100,0\n"));
    const std::string file = utf8Path(folder_.path() / "a.fbx");
    EXPECT_FALSE(read.node(u"A").hidden);
    EXPECT_TRUE(read.isNoted(file, "animations are left out"));
    EXPECT_TRUE(read.isNoted(file, "1 node is hidden by the property \"Visibility\""));
    EXPECT_TRUE(read.isNoted(file, "1 display layer is left out"));
    EXPECT_EQ(read.notes.notes().size(), 3U);
}

TEST_F(AssimpFiles, WhatTheLibraryDoesNotReadOfAnObjFileIsTold) {
    const ReadScene read = this->read("a.obj",
                                      "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\no A\ns 1\nf 1 2 3\no B\nf 1 2 4\n"
                                      "o A\nf 2 3 4\n");
    const std::string file = utf8Path(folder_.path() / "a.obj");
    EXPECT_EQ(read.meshOf(read.node(u"B")).faces.size(), 2U) << "one of them is A's";
    EXPECT_TRUE(read.isNoted(file, "1 object (\"A\") of which the file has several pieces"));
    EXPECT_TRUE(read.isNoted(file, "smoothing groups are left out"));
}

constexpr const char* kXTriangle = "Mesh { 3; 0.0;0.0;0.0;, 1.0;0.0;0.0;, 0.0;1.0;0.0;; 1; 3;0,1,2;; }";

TEST_F(AssimpFiles, ATurnedTopFrameOfXKeepsItsMatrix) {
    // Turned as the roots that the library makes for other formats: once with more than that, once exactly.
    for (const auto& [scale, up, x] : {std::tuple("2.0", "-2.0", 10.F), std::tuple("1.0", "-1.0", 0.F)}) {
        const ReadScene read = this->read("a.x", "xof 0303txt 0032\nFrame Root { FrameTransformMatrix { " +
                                                     std::string(scale) + ",0.0,0.0,0.0, 0.0,0.0," + scale +
                                                     ",0.0, 0.0," + up + ",0.0,0.0, " + std::to_string(x) +
                                                     ",0.0,0.0,1.0;; } Frame Box { " + kXTriangle + " } }\n");
        const float factor = x > 0 ? 2.F : 1.F;
        expectAt(read.node(u"Root"), x, 0, 0, 1e-5F);
        expectRow(read.node(u"Box").worldTransform[0], factor, 0, 0, 1e-5F);
        expectRow(read.node(u"Box").worldTransform[1], 0, 0, -factor, 1e-5F);
        expectRow(read.node(u"Box").worldTransform[2], 0, factor, 0, 1e-5F);
    }
}

TEST_F(AssimpFiles, RootsThatTheLibraryAddsAreNoNodes) {
    const ReadScene x = this->read("a.x", std::string("xof 0303txt 0032\nFrame A { ") + kXTriangle +
                                              " }\nFrame B { " + kXTriangle + " }\n");
    ASSERT_EQ(x.scene.nodes.size(), 2U);
    EXPECT_EQ(x.scene.roots.size(), 2U);
    EXPECT_EQ(x.scene.nodes[0].name, u"A");
    const ReadScene bare = this->read("bare.x", std::string("xof 0303txt 0032\n") + kXTriangle + "\n");
    ASSERT_EQ(bare.scene.nodes.size(), 1U);
    EXPECT_EQ(bare.scene.nodes[0].name, u"bare") << "a mesh without a frame";
    const ReadScene x3d =
        this->read("a.x3d", R"(<?xml version="1.0" encoding="UTF-8"?><X3D version="3.0"><Scene>
<Group DEF="G"><Shape DEF="S"><IndexedFaceSet coordIndex="0 1 2 -1"><Coordinate point="0 0 0 1 0 0 0 1 0"/>
</IndexedFaceSet></Shape></Group></Scene></X3D>)");
    for (const SnapshotNode& node : x3d.scene.nodes)
        EXPECT_EQ(toUtf8(node.name).find("a.x3d"), std::string::npos) << toUtf8(node.name);
    EXPECT_EQ(x3d.triangles(), 1U);
}

// A COLLADA scene of one node with a camera.
std::string colladaCamera(const char* upAxis, const char* matrix) {
    return std::string(R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset><unit name="inch" meter="0.0254"/>
<up_axis>)") +
           upAxis +
           R"(</up_axis></asset><library_cameras><camera id="cam" name="cam"><optics><technique_common><perspective>
<xfov>40</xfov><znear>1</znear><zfar>100</zfar></perspective></technique_common></optics></camera></library_cameras>
<library_visual_scenes><visual_scene id="S" name="S"><node id="C" name="C [a: 1]"><matrix>)" +
           matrix + R"(</matrix><instance_camera url="#cam"/></node></visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#S"/></scene></COLLADA>)";
}

// A COLLADA scene of a red material and the nodes that `nodes` says, which may use the mesh "#g".
std::string colladaMesh(const char* material, const char* nodes) {
    return std::string(R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset><up_axis>Z_UP</up_axis></asset>
<library_effects><effect id="e"><profile_COMMON><technique sid="c"><phong><diffuse><color>1 0 0 1</color></diffuse></phong>
</technique></profile_COMMON></effect></library_effects><library_materials>)") +
           material + R"(</library_materials><library_geometries><geometry id="g"><mesh><source id="p">
<float_array id="pa" count="9">0 0 0 1 0 0 0 1 0</float_array><technique_common><accessor source="#pa" count="3" stride="3">
<param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common>
</source><vertices id="v"><input semantic="POSITION" source="#p"/></vertices><triangles count="1" material="mm">
<input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles></mesh></geometry></library_geometries>
<library_visual_scenes><visual_scene id="s">)" +
           nodes +
           R"(</visual_scene></library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>)";
}

TEST_F(AssimpFiles, AMaterialMayBeCalledAsTheLibraryCallsItsOwn) {
    const ReadScene collada = this->read(
        "a.dae",
        colladaMesh(R"(<material id="m" name="DefaultMaterial"><instance_effect url="#e"/></material>)",
                    R"(<node id="A" name="A"><instance_geometry url="#g"><bind_material><technique_common>
<instance_material symbol="mm" target="#m"/></technique_common></bind_material></instance_geometry></node>)"));
    EXPECT_EQ(collada.materialOf(collada.node(u"A")).name, u"DefaultMaterial");
    EXPECT_EQ(collada.materialOf(collada.node(u"A")).diffuse, (host::Point3{1, 0, 0}));
    const ReadScene nff = this->read("a.nff", "f 1 0 0 1 0 0 0 1\np 3\n0 0 0\n1 0 0\n0 1 0\n");
    ASSERT_EQ(nff.scene.materials.size(), 1U);
    EXPECT_EQ(nff.scene.materials[0].diffuse, (host::Point3{1, 0, 0}));
}

TEST_F(AssimpFiles, WhatTheLibraryPutsForNoMaterialIsNone) {
    const ReadScene collada =
        this->read("a.dae", colladaMesh("", R"(<node id="A" name="A"><instance_geometry url="#g"/></node>)"));
    EXPECT_TRUE(collada.scene.materials.empty());
    const ReadScene nff = this->read("a.nff", "p 3\n0 0 0\n1 0 0\n0 1 0\n");
    EXPECT_TRUE(nff.scene.materials.empty());
    const ReadScene stl = this->read("a.stl",
                                     "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                                     "vertex 0 1 0\nendloop\nendfacet\nendsolid a\n");
    EXPECT_TRUE(stl.scene.materials.empty());
}

TEST_F(AssimpFiles, ColladaCamerasThatLookAlongHostYAreUpright) {
    // Z-up: turned by 90 degrees about X. Y-up: not turned at all.
    for (const std::string& text : {colladaCamera("Z_UP", "1 0 0 1 0 0 -1 2 0 1 0 3 0 0 0 1"),
                                    colladaCamera("Y_UP", "1 0 0 1 0 1 0 3 0 0 1 -2 0 0 0 1")}) {
        const ReadScene read = this->read("a.dae", text);
        ASSERT_EQ(read.scene.nodes.size(), 1U);
        ASSERT_EQ(read.type(u"C [a: 1]"), IGameObject::IGAME_CAMERA);
        const host::GMatrix& world = read.node(u"C [a: 1]").worldTransform;
        expectRow(world[0], 1, 0, 0, 1e-6F);
        expectRow(world[1], 0, 0, 1, 1e-6F);
        expectRow(world[2], 0, -1, 0, 1e-6F);
        expectRow(world[3], 1, 2, 3, 1e-5F);
    }
}

TEST_F(AssimpFiles, AColladaNodeWithoutANameIsCalledByItsId) {
    const ReadScene read =
        this->read("a.dae", colladaMesh("", R"(<node id="Chair"><instance_geometry url="#g"/></node>
<node id="T" name="Table"><instance_geometry url="#g"/></node>)"));
    ASSERT_EQ(read.scene.nodes.size(), 2U);
    EXPECT_EQ(read.scene.nodes[0].name, u"Chair");
    EXPECT_EQ(read.scene.nodes[1].name, u"Table");
}

TEST_F(AssimpFiles, ColladaMayHaveXUp) {
    const ReadScene read = this->read("a.dae", colladaCamera("X_UP", "1 0 0 5 0 1 0 0 0 0 1 0 0 0 0 1"));
    expectRow(read.node(u"C [a: 1]").worldTransform[3], 0, 0, 5, 1e-5F);
}

TEST_F(AssimpFiles, WhatTheLibraryDoesNotReadOfAColladaFileIsTold) {
    std::string text = colladaCamera("Z_UP", "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1");
    text.insert(text.find("</node>"), R"(<extra><technique profile="FCOLLADA"><visibility>0.0</visibility>
        <user_properties>qv_wt_res_w = 5</user_properties></technique></extra>)");
    const ReadScene read = this->read("a.dae", text);
    const std::string file = utf8Path(folder_.path() / "a.dae");
    EXPECT_TRUE(read.node(u"C [a: 1]").userProperties.empty());
    EXPECT_TRUE(read.isNoted(file, "user properties are left out"));
    EXPECT_TRUE(read.isNoted(file, "1 node is hidden"));
}

TEST_F(AssimpFiles, NamesThatAreNoUtf8AreWindows1252) {
    const ReadScene read = this->read("a.obj", "o Sch\xF6n \x80\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    ASSERT_EQ(read.scene.nodes.size(), 1U);
    EXPECT_EQ(read.scene.nodes[0].name.substr(0, 5), u"Sch\u00F6n");
}

TEST_F(AssimpFiles, AChainOfNodesKeepsItsOrderAndPlace) {
    constexpr int kDepth = 3000;
    std::string nodes;
    for (int i = 0; i < kDepth; ++i) {
        nodes += R"({"name":"n)" + std::to_string(i) + R"(","translation":[0,0.5,0])";
        nodes += i + 1 < kDepth ? R"(,"children":[)" + std::to_string(i + 1) + "]}," : "}";
    }
    const ReadScene read =
        this->read("a.gltf", gltf(R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[)" + nodes + "]"));
    ASSERT_EQ(read.scene.nodes.size(), std::size_t{kDepth});
    EXPECT_EQ(faultOf(read.scene), "");
    for (int i = 0; i + 1 < kDepth; ++i) {
        ASSERT_EQ(read.scene.nodes[static_cast<std::size_t>(i)].children,
                  (std::vector<SnapshotRef>{static_cast<SnapshotRef>(i + 1)}));
    }
    expectAt(read.scene.nodes.back(), 0, 0, kDepth * 0.5F, 0);
}

TEST_F(AssimpFiles, ANameThatTheLibraryCutsIsTold) {
    // 1023 bytes are kept, which cuts the last of these two-byte characters.
    std::string name = "x";
    for (int i = 0; i < 600; ++i)
        name += "\xC3\xA4";
    const ReadScene read = this->read(
        "a.gltf",
        gltf(R"("scene":0,"scenes":[{"nodes":[0,1]}],"nodes":[{"name":"B"},{"name":")" + name + R"("}])"));
    const std::u16string& kept = read.scene.nodes.at(1).name;
    EXPECT_EQ(kept, u"x" + std::u16string(511, u'\u00E4'));
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.gltf"), "a name longer than can be read"));
}

TEST_F(AssimpFiles, WhatCannotBeReadIsRefusedInOneLineWithTheFilesName) {
    const std::filesystem::path folder = folder_.path();
    std::filesystem::create_directory(folder / "folder.obj");
    const std::string gltfText = gltf(R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"A"}])");
    struct Case {
        std::filesystem::path file;
        const char* reason;
    };
    const Case cases[] = {
        {folder / "missing.obj", "there is no such file"},
        {folder / "folder.obj", "is a folder"},
        {folder_.write("empty.obj", ""), "the file is empty"},
        {folder_.write("a.txt", "hello"), "the ending \".txt\" cannot be read"},
        {folder_.write("noending", "hello"), "cannot be read"},
        {folder_.write("cut.gltf", gltfText.substr(0, gltfText.size() / 2)), "cannot be read: "},
        {folder_.write("wrong.fbx", "this is no FBX file\nat all\n"), "cannot be read: "},
        {folder_.write("wide.obj", std::string_view("o\0 \0A\0\n\0", 8)), "UTF-16"},
        {folder_.write("comment.obj", "# nothing but a remark, though a long one\n"), "holds nothing"},
        {folder_.write("large.off", "OFF # a remark\n4000000000 1 0\n0 0 0\n"),
         "promises 4000000000 vertices"},
        {folder_.write("large.ply",
                       "ply\nformat ascii 1.0\nelement vertex 9000\nproperty float x\n"
                       "end_header\n1\n"),
         "promises 9000 vertices"},
        {folder_.write("nodes.gltf", gltf(R"("scene":0,"scenes":[{"nodes":[]}])")), "holds nothing"},
    };
    for (const Case& c : cases) {
        const std::string message = refusal(c.file);
        EXPECT_EQ(message.rfind(utf8Path(c.file) + ": ", 0), 0U) << c.file << " gave: " << message;
        EXPECT_NE(message.find(c.reason), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
}

// An ASCII PLY file of three vertices, with the given lines in its header and the given faces.
std::string ply(const std::string& faceElement, const std::string& faces, const std::string& remark = "") {
    return "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n" +
           faceElement + "property list uchar int vertex_indices\n" + remark +
           "end_header\n0 0 0\n1 0 0\n0 1 0\n" + faces;
}

TEST_F(AssimpFiles, WordsInRemarksOfPlyPromiseNothing) {
    const ReadScene read =
        this->read("a.ply", ply("element face 1\n", "3 0 1 2\n", "comment made of element face 800000\n"));
    EXPECT_EQ(read.triangles(), 1U);
    EXPECT_TRUE(read.notes.notes().empty());
}

TEST_F(AssimpFiles, LinesOfPlyMayEndInAnyWay) {
    for (const std::string_view end : {"\r", "\r\n"}) {
        std::string text;
        for (const char c : ply("element face 2\n", "3 0 1 2\n3 2 1 0\n"))
            text += c == '\n' ? std::string(end) : std::string(1, c);
        const ReadScene read = this->read("a.ply", text);
        EXPECT_EQ(read.triangles(), 2U);
        EXPECT_TRUE(read.notes.notes().empty());
    }
}

TEST_F(AssimpFiles, APlyFileThatIsCutOffBetweenItsFacesIsTold) {
    const ReadScene read = this->read("a.ply", ply("element face 5\n", "3 0 1 2\n3 2 1 0\n"));
    EXPECT_TRUE(read.isNoted(utf8Path(folder_.path() / "a.ply"), "it promises 5 faces, and 2 could be read"));
    EXPECT_EQ(read.triangles(), 2U);
    const ReadScene whole = this->read("b.ply", ply("element face 2\n", "3 0 1 2\n3 0 1 2\n"));
    EXPECT_EQ(whole.triangles(), 2U);
    EXPECT_TRUE(whole.notes.notes().empty()) << "equal faces that the file has";
}

// Throws when the k-th unit of work is done.
class Interruption final : public Progress {
  public:
    void beginPhase(std::string_view /*name*/, std::uint64_t /*total*/) override {}
    void advance(std::uint64_t /*amount*/) override { throw std::out_of_range("interrupted"); }
};

TEST_F(AssimpFiles, WhatTheProgressThrowsEndsTheReadingAndPassesThrough) {
    const auto file = folder_.write("a.obj", "o A\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    Interruption progress;
    ImportNotes notes;
    EXPECT_THROW(readWithAssimp(file, {}, progress, notes), std::out_of_range);
}

TEST(AssimpEndings, AreKnownInAnyCase) {
    EXPECT_TRUE(canReadWithAssimp("a/room.fbx"));
    EXPECT_TRUE(canReadWithAssimp("ROOM.GLB"));
    EXPECT_TRUE(canReadWithAssimp("teapot.DAE"));
    EXPECT_FALSE(canReadWithAssimp("room.txt"));
    EXPECT_FALSE(canReadWithAssimp("fbx"));
    EXPECT_FALSE(canReadWithAssimp("room."));
    EXPECT_FALSE(canReadWithAssimp("room.scene.json"));
}

TEST(AssimpFormats, AreSortedAndSayWhatIsLost) {
    const auto& formats = assimpFormats();
    EXPECT_TRUE(std::ranges::is_sorted(formats, {}, &ReadableFormat::endings));
    for (const ReadableFormat& format : formats) {
        EXPECT_FALSE(format.name.empty());
        EXPECT_FALSE(format.endings.empty()) << format.name;
        EXPECT_FALSE(format.lost.empty()) << format.name;
    }
}

// What is known of a format hangs on the library's name for it.
TEST(AssimpFormats, HaveTheirOwnFacts) {
    const std::pair<const char*, const char*> kExpected[] = {
        {"Autodesk FBX", "the property Visibility (Show is taken), layers, selection"},
        {"glTF2", "uses of a camera by all nodes but the last"},
        {"glTF", "specular colours"},
        {"Collada", "shapes of area lights"},
        {"Wavefront Object", "the object of faces after a group that is opened again"},
        {"Discreet 3DS", "the roll of cameras, and directions of animated ones"},
        {"Direct3D XFile", "lights and cameras"},
        {"Stereolithography (STL)", "all but the triangles of one mesh"},
        {"Stanford Polygon Library (PLY)", "all but the triangles and texture coordinates of one mesh"},
        {"OFF", "all but the triangles of one mesh"},
        {"Blender 3D (http://www.blender3d.org)", "modifiers"},
        {"Industry Foundation Classes (IFC)", "lights and cameras"},
    };
    const auto& formats = assimpFormats();
    for (const auto& [name, lost] : kExpected) {
        const auto format = std::ranges::find(formats, name, &ReadableFormat::name);
        ASSERT_NE(format, formats.end()) << name;
        EXPECT_NE(std::ranges::find(format->lost, lost), format->lost.end()) << name;
    }
}

}  // namespace
}  // namespace velinor
