#include "cli/ogre_mesh_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <limits>

#include "cli/ogre_mesh_test_support.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// The fault of a mesh; empty where it has none.
std::string ogreMeshFault(const std::string& bytes) {
    try {
        readOgreMesh(bytes);
        return "";
    } catch (const OgreMeshError& error) {
        return error.what();
    }
}

// A box as OgreXMLConverter 1.12 writes it.
std::string convertedBox() {
    std::ifstream file(TOLVEX_OGRE_MESH_CORPUS "/box.mesh", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(OgreMeshReader, ReadsWhatTheConverterWrites) {
    const OgreMesh mesh = readOgreMesh(convertedBox());
    EXPECT_EQ(mesh.vertices, 24U);
    ASSERT_EQ(mesh.submeshes.size(), 1U);
    EXPECT_EQ(mesh.submeshes[0].material, "Letter");
    EXPECT_EQ(mesh.submeshes[0].triangles, 12U);
    EXPECT_THAT(mesh.minimum, ElementsAre(-0.5F, 0.F, -0.5F));
    EXPECT_THAT(mesh.maximum, ElementsAre(0.5F, 1.F, 0.5F));
}

TEST(OgreMeshReader, TakesAllIntactForms) {
    struct Case {
        const char* name;
        std::function<void(TestMesh&)> change;
    };
    const Case cases[] = {
        {"as it is", [](TestMesh&) {}},
        {"an older version", [](TestMesh& mesh) { mesh.version = "[MeshSerializer_v1.8]"; }},
        {"16-bit indices", [](TestMesh& mesh) { mesh.isWide = false; }},
        {"vertices of its own", [](TestMesh& mesh) { mesh.isShared = false; }},
        {"two submeshes", [](TestMesh& mesh) { mesh.submeshes = 2; }},
        {"edge lists", [](TestMesh& mesh) { mesh.more = meshChunk(0xB000, "anything"); }},
        {"a texture alias", [](TestMesh& mesh) { mesh.moreSubmesh = meshChunk(0x4200, "a\nb\n"); }},
        {"a name for no submesh",
         [](TestMesh& mesh) {
             mesh.more = meshChunk(0xA000, meshChunk(0xA100, "\x07" + std::string(1, '\0') + "X\n"));
         }},
        {"another radius", [](TestMesh& mesh) { mesh.bounds.back() = 5; }},
    };
    for (const auto& [name, change] : cases)
        EXPECT_EQ(ogreMeshFault(changedMesh(change).bytes()), "") << name;
}

TEST(OgreMeshReader, CountsTheVerticesOfAllSubmeshes) {
    const OgreMesh mesh = readOgreMesh(changedMesh([](TestMesh& changed) {
                                           changed.isShared = false;
                                           changed.submeshes = 3;
                                       }).bytes());
    EXPECT_EQ(mesh.vertices, 9U);
    EXPECT_EQ(mesh.submeshes.size(), 3U);
}

TEST(OgreMeshReader, SaysWhatIsWrong) {
    constexpr float kInfinite = std::numeric_limits<float>::infinity();
    struct Case {
        std::function<void(TestMesh&)> change;
        const char* fault;
    };
    const Case cases[] = {
        {[](TestMesh& mesh) { mesh.version = "[MeshSerializer_v1.41]"; },
         "the version is \"[MeshSerializer_v1.41]\""},
        {[](TestMesh& mesh) { mesh.material = ""; }, "submesh 0 has no material"},
        {[](TestMesh& mesh) { mesh.submeshes = 0; }, "has no submesh"},
        {[](TestMesh& mesh) { mesh.hasGeometry = false; }, "submesh 0 has no vertices"},
        {[](TestMesh& mesh) { mesh.isShared = mesh.hasGeometry = false; }, "submesh 0 has no vertices"},
        {[](TestMesh& mesh) { mesh.indices[2] = 3; }, "submesh 0 has the index 3, there are 3 vertices"},
        {[](TestMesh& mesh) { mesh.indices[0] = 0xFFFFFFFF; }, "the index 4294967295"},
        {[](TestMesh& mesh) { mesh.indices.push_back(0); }, "a submesh has 4 indices"},
        {[](TestMesh& mesh) { mesh.indices.clear(); }, "a submesh has 0 indices"},
        {[](TestMesh& mesh) { mesh.operation = 5; }, "the operation of a submesh is 5"},
        {[](TestMesh& mesh) { mesh.vertices = 4; }, "a vertex buffer has 36 bytes for 4 vertices of 12"},
        {[](TestMesh& mesh) { mesh.stride = 8; }, "a vertex buffer has 36 bytes for 3 vertices of 8"},
        {[](TestMesh& mesh) { mesh.element[0] = 1; }, "there is no vertex buffer 1"},
        {[](TestMesh& mesh) { mesh.element[1] = 99; }, "a vertex element has the unknown type 99"},
        {[](TestMesh& mesh) { mesh.element[1] = 1; }, "positions are not three floats"},
        {[](TestMesh& mesh) { mesh.element[2] = 4; }, "the vertices have no positions"},
        {[](TestMesh& mesh) { mesh.element[3] = 4; }, "a vertex element lies outside of its vertex"},
        {[](TestMesh& mesh) { mesh.element.push_back(0); }, "2 bytes too many in a vertex element"},
        {[](TestMesh& mesh) { mesh.positions[4] = kInfinite; }, "the position of vertex 1 is not finite"},
        {[](TestMesh& mesh) { mesh.bounds[3] = std::numeric_limits<float>::quiet_NaN(); },
         "bounds are not finite"},
        {[](TestMesh& mesh) { mesh.bounds[6] = kInfinite; }, "the bounds are not finite"},
        {[](TestMesh& mesh) { mesh.bounds[4] = 1; }, "the bounds are not those of the positions"},
        {[](TestMesh& mesh) { mesh.bounds[0] = 1; }, "the bounds are not those of the positions"},
        {[](TestMesh& mesh) { mesh.bounds.clear(); }, "the mesh has no bounds"},
        {[](TestMesh& mesh) { mesh.bounds.push_back(0); }, "4 bytes too many in the bounds"},
        {[](TestMesh& mesh) {
             mesh.more = meshChunk(0x9000, floatBytes({0, 0, 0, 1, 2, 0, 2}));
         },
         "two bounds"},
        {[](TestMesh& mesh) { mesh.more = mesh.geometryChunk(); }, "there are two shared geometries"},
        {[](TestMesh& mesh) { mesh.more = meshChunk(0x1234, ""); }, "chunk 0x1234 has no place in a mesh"},
        {[](TestMesh& mesh) { mesh.moreSubmesh = mesh.geometryChunk(); },
         "chunk 0x5000 has no place in a submesh"},
        {[](TestMesh& mesh) { mesh.more = meshChunk(0xA000, meshChunk(0xA100, "ab")); },
         "a submesh name has no end"},
    };
    for (const auto& [change, fault] : cases)
        EXPECT_THAT(ogreMeshFault(changedMesh(change).bytes()), HasSubstr(fault));
}

TEST(OgreMeshReader, RefusesWhatIsNoMesh) {
    EXPECT_THAT(ogreMeshFault(""), HasSubstr("is empty"));
    EXPECT_THAT(ogreMeshFault("<mesh></mesh>"), HasSubstr("is no binary OGRE mesh"));
    EXPECT_THAT(ogreMeshFault(TestMesh().bytes() + "x"), HasSubstr("1 bytes too many in the file"));
}

TEST(OgreMeshReader, RefusesAMeshThatIsCutOffAnywhere) {
    const std::string box = convertedBox();
    for (std::size_t size = 0; size < box.size(); ++size)
        EXPECT_NE(ogreMeshFault(box.substr(0, size)), "") << size << " bytes";
}

TEST(OgreMeshReader, RefusesAChunkThatIsLongerThanWhatHoldsIt) {
    std::string bytes = TestMesh().bytes();
    const std::size_t length = bytes.find('\n') + 3;
    bytes[length] = static_cast<char>(bytes[length] + 1);
    EXPECT_THAT(ogreMeshFault(bytes), HasSubstr("chunk 0x3000 needs"));
    bytes.replace(length, 4, 4, '\0');
    EXPECT_THAT(ogreMeshFault(bytes), HasSubstr("chunk 0x3000 says it has 0 bytes"));
}

}  // namespace
}  // namespace velinor
