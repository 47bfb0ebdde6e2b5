#include "tools/ogre/mesh_binary.h"

#include <gmock/gmock.h>

#include <limits>

#include "tools/ogre/mesh_binary_test_support.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> faultsOf(const TestMesh& mesh) {
    const std::string bytes = mesh.bytes();
    return meshFaults(readMeshBinary(bytes));
}

std::string refusalOf(const std::string& bytes) {
    try {
        readMeshBinary(bytes);
        return "";
    } catch (const ByteFault& fault) {
        return fault.what();
    }
}

TEST(MeshBinary, IsReadWhole) {
    for (const bool isWide : {true, false}) {
        TestMesh square;
        square.isWide = isWide;
        const std::string bytes = square.bytes();
        const MeshBinary mesh = readMeshBinary(bytes);
        EXPECT_EQ(mesh.vertexCount, 4U);
        EXPECT_EQ(mesh.position(2), (std::array<float, 3>{1, 0, 2}));
        ASSERT_EQ(mesh.submeshes.size(), 2U);
        EXPECT_EQ(mesh.submeshes[1].material, "Metal");
        EXPECT_EQ(mesh.submeshes[1].indexCount(), 3U);
        EXPECT_EQ(mesh.submeshes[1].index(1), 3U) << (isWide ? "32-bit" : "16-bit");
        EXPECT_EQ(mesh.bounds, (MeshBounds{{-1, 0, -2}, {1, 0, 2}}));
        EXPECT_THAT(meshFaults(mesh), IsEmpty());
    }
}

TEST(MeshBinary, IsRefusedWhereverItIsCutOff) {
    const std::string bytes = TestMesh().bytes();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_NE(refusalOf(bytes.substr(0, length)), "") << "cut to " << length << " bytes";
}

TEST(MeshBinary, IsRefusedWithMoreBehindIt) {
    EXPECT_THAT(refusalOf(TestMesh().bytes() + "x"), HasSubstr("1 bytes too many"));
}

TEST(MeshBinary, IsRefusedInAnotherVersion) {
    TestMesh mesh;
    mesh.version = "[MeshSerializer_v1.8]";
    EXPECT_THAT(refusalOf(mesh.bytes()), HasSubstr("the version is \"[MeshSerializer_v1.8]\""));
}

TEST(MeshBinary, FindsAnIndexWithoutVertex) {
    TestMesh mesh;
    mesh.submeshes[1].indices[2] = 4;
    EXPECT_THAT(faultsOf(mesh), ElementsAre("submesh 1 refers to vertex 4 of 4"));
}

TEST(MeshBinary, FindsBoundsThatDoNotFit) {
    TestMesh mesh;
    mesh.bounds->at(3) = 1.5F;
    EXPECT_THAT(faultsOf(mesh), ElementsAre(HasSubstr("but the positions reach from (-1.000000, 0.000000")));
    mesh.bounds->at(3) = std::numeric_limits<float>::infinity();
    EXPECT_THAT(faultsOf(mesh), ElementsAre("the bounds are not finite"));
    mesh.bounds.reset();
    EXPECT_THAT(faultsOf(mesh), ElementsAre("the mesh has no bounds"));
}

TEST(MeshBinary, FindsAPositionThatIsNoNumber) {
    TestMesh mesh;
    mesh.positions[1][0] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(faultsOf(mesh), ElementsAre("a position is not finite"));
}

TEST(MeshBinary, FindsWhatASubmeshLacks) {
    TestMesh mesh;
    mesh.submeshes[0] = {"", {}};
    EXPECT_THAT(faultsOf(mesh), ElementsAre("submesh 0 has no material name", "submesh 0 has no triangles"));
    mesh.submeshes.clear();
    EXPECT_THAT(faultsOf(mesh), ElementsAre("the mesh has no triangles"));
}

TEST(MeshBinary, FindsASubmeshThatIsNoListOfTriangles) {
    TestMesh mesh;
    mesh.submeshes.resize(1);
    mesh.operation = 5;
    EXPECT_THAT(faultsOf(mesh), ElementsAre("submesh 0 is no list of triangles"));
    mesh.operation = 4;
    mesh.submeshes[0].indices.pop_back();
    EXPECT_THAT(faultsOf(mesh), ElementsAre("submesh 0 is no list of triangles"));
}

}  // namespace
}  // namespace velinor
