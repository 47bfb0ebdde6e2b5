#include "hosts/ase/ase_mesh.h"

#include <gmock/gmock.h>

#include "hosts/ase/ase_test_support.h"

namespace velinor {
namespace {

using host::Point3;
using testing::ElementsAre;
using testing::HasSubstr;

// The one mesh of a file whose only object has that mesh block.
SnapshotMesh meshOf(const std::string& mesh) {
    return readAseText(kAseHeader + aseMeshObject("A", mesh)).mesh(u"A");
}

std::string refusalOf(const std::string& mesh) {
    return aseRefusal(kAseHeader + aseMeshObject("A", mesh));
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

const std::string kChannel =
    "*MESH_NUMTVERTEX 3\n*MESH_TVERTLIST {\n*MESH_TVERT 0 0 0 0\n*MESH_TVERT 1 1 0 0.5\n*MESH_TVERT 2 0 1 "
    "0\n}\n"
    "*MESH_NUMTVFACES 1\n*MESH_TFACELIST {\n*MESH_TFACE 0 2 0 1\n}\n";

TEST(AseMesh, HasVerticesAndFacesAsTheFileListsThem) {
    const SnapshotMesh mesh = meshOf(aseTriangle());
    EXPECT_THAT(mesh.vertices, ElementsAre(Point3{0, 0, 0}, Point3{1, 0, 0}, Point3{0, 1, 0}));
    EXPECT_THAT(mesh.faces, ElementsAre(FaceIndices{0, 1, 2}));
    EXPECT_THAT(mesh.smoothing, ElementsAre(0U));
    EXPECT_THAT(mesh.materialIds, ElementsAre(0));
    EXPECT_TRUE(mesh.maps.empty());
}

TEST(AseMesh, ItemsAreTakenByTheirNumbers) {
    std::string text = aseTriangle();
    text = replaced(text, "*MESH_VERTEX 0 0 0 0\n*MESH_VERTEX 1 1 0 0",
                    "*MESH_VERTEX 1 1 0 0\n*MESH_VERTEX 0 0 0 0");
    EXPECT_EQ(meshOf(text), meshOf(aseTriangle()));
}

TEST(AseMesh, SmoothingGroupsAndMaterialIdsBelongToTheirFace) {
    const SnapshotMesh mesh = meshOf(aseTriangle("", "\t *MESH_SMOOTHING 1,17,32 \t*MESH_MTLID 65535"));
    EXPECT_THAT(mesh.smoothing, ElementsAre(0x80010001U));
    EXPECT_THAT(mesh.materialIds, ElementsAre(65535));
    const SnapshotMesh none = meshOf(aseTriangle("", "*MESH_SMOOTHING \t*MESH_MTLID 3"));
    EXPECT_THAT(none.smoothing, ElementsAre(0U));
    EXPECT_THAT(none.materialIds, ElementsAre(3));
    EXPECT_THAT(refusalOf(aseTriangle("", "*MESH_MTLID 65536")), HasSubstr("from 0 to 65535"));
}

TEST(AseMesh, MapChannelsKeepTheirNumbersAndThreeComponents) {
    const SnapshotMesh mesh =
        meshOf(aseTriangle(kChannel + "*MESH_NUMCVERTEX 0\n" + aseBlock("MESH_MAPPINGCHANNEL 2", kChannel) +
                           aseBlock("MESH_MAPPINGCHANNEL 99", replaced(kChannel, "2 0 1\n", "1 1 1\n"))));
    ASSERT_EQ(mesh.maps.size(), 3U);
    const SnapshotMapChannel& first = mesh.maps.at(1);
    EXPECT_THAT(first.vertices, ElementsAre(Point3{0, 0, 0}, Point3{1, 0, 0.5F}, Point3{0, 1, 0}));
    EXPECT_THAT(first.faces, ElementsAre(FaceIndices{2, 0, 1}));
    EXPECT_EQ(mesh.maps.at(2), first);
    EXPECT_THAT(mesh.maps.at(99).faces, ElementsAre(FaceIndices{1, 1, 1}));
}

TEST(AseMesh, AChannelWithoutVerticesIsNone) {
    EXPECT_TRUE(meshOf(aseTriangle("*MESH_NUMTVERTEX 0\n")).maps.empty());
    EXPECT_TRUE(
        meshOf(aseTriangle("*MESH_NUMTVERTEX 0\n*MESH_TVERTLIST {\n}\n*MESH_NUMTVFACES 0\n")).maps.empty());
}

TEST(AseMesh, AChannelMayHaveVerticesAndNoFaces) {
    const std::string vertices = kChannel.substr(0, kChannel.find("*MESH_NUMTVFACES"));
    const SnapshotMesh mesh = meshOf(aseTriangle(vertices));
    EXPECT_EQ(mesh.maps.at(1).vertices.size(), 3U);
    EXPECT_TRUE(mesh.maps.at(1).faces.empty());
}

TEST(AseMesh, VertexColoursAndTheMeshesOfAnAnimationArePassedOverAndTold) {
    const std::string colours =
        "*MESH_NUMCVERTEX 1\n*MESH_CVERTLIST {\n*MESH_VERTCOL 0 1 1 1\n}\n*MESH_NUMCVFACES 1\n"
        "*MESH_CFACELIST {\n*MESH_CFACE 0 0 0 0\n}\n";
    const std::string animation = aseBlock("MESH_ANIMATION", replaced(aseTriangle(), "0 0 0 0", "0 7 7 7"));
    const ReadAse read = readAseText(kAseHeader + aseMeshObject("A", aseTriangle(colours), animation));
    EXPECT_EQ(read.mesh(u"A"), meshOf(aseTriangle()));
    EXPECT_EQ(read.notesOf("room.ase", "animations are left out"), 1);
    EXPECT_EQ(read.notesOf("room.ase", "1 mesh (\"A\") has vertex colours"), 1);
    EXPECT_EQ(readAseText(kAseHeader + aseMeshObject("A", aseTriangle("*MESH_NUMCVERTEX 0\n")))
                  .notesOf("room.ase", "vertex colours"),
              0);
}

TEST(AseMesh, ABrokenListIsRefusedAtItsPlace) {
    struct Case {
        std::string from;
        std::string to;
        const char* message;
    };
    const std::string good = aseTriangle(kChannel);
    for (const Case& c : {
             Case{"B:    1", "B:    3", "vertex \"3\" does not exist; there are 3"},
             Case{"A:    0 ", "", "there is \"B:\" where \"A:\" is expected"},
             Case{"*MESH_VERTEX 2 0 1 0\n", "", "promises 3 vertices and lists 2; vertex 2 is missing"},
             Case{"*MESH_VERTEX 1 1", "*MESH_VERTEX 0 1", "vertex 0 is there twice"},
             Case{"*MESH_VERTEX 1 1", "*MESH_VERTEX 3 1", "vertex \"3\" does not exist; there are 3"},
             Case{"*MESH_NUMFACES 1", "*MESH_NUMFACES 2", "promises 2 faces and lists 1; face 1 is missing"},
             Case{"*MESH_NUMFACES 1", "*MESH_NUMFACES 1 *MESH_NUMFACES 1",
                  "the number of faces is there twice"},
             Case{"*MESH_NUMVERTEX 3", "*MESH_NUMVERTEX 4000000000", "has room for"},
             Case{"*MESH_NUMVERTEX 3", "", "vertex \"0\" does not exist; there are 0"},
             Case{"*MESH_TFACE 0 2", "*MESH_TFACE 0 3", "map vertex \"3\" does not exist; there are 3"},
             Case{"*MESH_TFACE 0 2", "*MESH_TFACE 1 2", "map face \"1\" does not exist; there are 1"},
             Case{"*MESH_TVERT 2 0 1 0\n", "", "promises 3 map vertices and lists 2"},
             Case{"*MESH_VERTEX 2 0 1 0", "*MESH_VERTEX 2 0 1", "where a number is expected"},
             Case{"*MESH_VERTEX 2 0 1 0", "*MESH_VERTEX 2 0 x 0",
                  "there is \"x\" where a number is expected"},
         }) {
        const std::string message = refusalOf(replaced(good, c.from, c.to));
        EXPECT_THAT(message, HasSubstr(c.message));
        EXPECT_TRUE(message.starts_with("room.ase: line ")) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos);
    }
    const std::string twoFaces =
        "*MESH_NUMTVERTEX 1\n*MESH_TVERTLIST {\n*MESH_TVERT 0 0 0 0\n}\n*MESH_NUMTVFACES 2\n"
        "*MESH_TFACELIST {\n*MESH_TFACE 0 0 0 0\n*MESH_TFACE 1 0 0 0\n}\n";
    EXPECT_THAT(refusalOf(aseTriangle(twoFaces)), HasSubstr("map channel 1 has 2 faces, and the mesh has 1"));
    EXPECT_THAT(refusalOf(aseTriangle(aseBlock("MESH_MAPPINGCHANNEL 100", ""))), HasSubstr("from 1 to 99"));
    EXPECT_THAT(
        refusalOf(aseTriangle(aseBlock("MESH_MAPPINGCHANNEL 2", "") + aseBlock("MESH_MAPPINGCHANNEL 2", ""))),
        HasSubstr("map channel 2 is there twice"));
}

// The vertices or the faces of the channel would find room in what follows, but not both.
TEST(AseMesh, ListsTogetherPromiseNoMoreThanTheRestOfTheFileHolds) {
    const std::string channel =
        "*MESH_NUMTVERTEX 200\n*MESH_TVERTLIST {\n*MESH_TVERT 0 0 0 0\n}\n"
        "*MESH_NUMTVFACES 200\n*MESH_TFACELIST {\n*MESH_TFACE 0 0 0 0\n}\n";
    const std::string rest = aseBlock("PADDING", std::string(4000, '\n'));
    const std::string message = refusalOf(aseTriangle(aseBlock("MESH_MAPPINGCHANNEL 2", channel)) + rest);
    EXPECT_THAT(message, HasSubstr("line 28, column 18: the file promises 200 map faces and has room for"));
}

TEST(AseMesh, TheShortestSpellingOfPromisedListsHasRoom) {
    constexpr int kItems = 500;
    const std::string count = std::to_string(kItems);
    std::string vertices;
    std::string faces;
    std::string mapVertices;
    std::string mapFaces;
    for (int i = 0; i < kItems; ++i) {
        const std::string number = std::to_string(i);
        vertices += "*MESH_VERTEX " + number + " 0 0 0";
        faces += "*MESH_FACE " + number + " A:0 B:0 C:0";
        mapVertices += "*MESH_TVERT " + number + " 0 0 0";
        mapFaces += "*MESH_TFACE " + number + " 0 0 0";
    }
    const SnapshotMesh mesh =
        meshOf("*MESH {*MESH_NUMVERTEX " + count + "*MESH_NUMFACES " + count + "*MESH_NUMTVERTEX " + count +
               "*MESH_NUMTVFACES " + count + "*MESH_TVERTLIST {" + mapVertices + "}*MESH_TFACELIST {" +
               mapFaces + "}*MESH_VERTEX_LIST {" + vertices + "}*MESH_FACE_LIST {" + faces + "}}");
    EXPECT_EQ(mesh.vertices.size(), std::size_t{kItems});
    EXPECT_EQ(mesh.maps.at(1).faces.size(), std::size_t{kItems});
}

TEST(AseMesh, VerticesComeFromTheWorldIntoTheSpaceOfTheNode) {
    // The rows of a turn by 90 degrees about z, with a scale of 2 along the node's x, at (10, 20, 30).
    const std::string rows =
        "*NODE_TM {\n*NODE_NAME \"A\"\n*TM_ROW0 0 2 0\n*TM_ROW1 -1 0 0\n*TM_ROW2 0 0 1\n"
        "*TM_ROW3 10 20 30\n}\n";
    std::string mesh = replaced(aseTriangle(), "0 0 0 0", "0 10 20 30");
    mesh = replaced(mesh, "1 1 0 0", "1 10 24 30");
    mesh = replaced(mesh, "2 0 1 0", "2 7 20 31");
    const ReadAse read = readAseText(kAseHeader + aseBlock("GEOMOBJECT", aseName("A") + rows + mesh));
    EXPECT_THAT(read.mesh(u"A").vertices, ElementsAre(Point3{0, 0, 0}, Point3{2, 0, 0}, Point3{0, 3, 1}));
    const host::GMatrix expected({0, 2, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 30, 1});
    EXPECT_EQ(read.node(u"A").worldTransform, expected);
}

TEST(AseMesh, AFlatNodeKeepsItsMeshWithinItsPlane) {
    const std::string rows =
        "*NODE_TM {\n*TM_ROW0 1 0 0\n*TM_ROW1 0 1 0\n*TM_ROW2 0 0 0\n*TM_ROW3 0 0 0\n}\n";
    const ReadAse read =
        readAseText(kAseHeader + aseBlock("GEOMOBJECT", aseName("A") + rows + aseTriangle()));
    EXPECT_THAT(read.mesh(u"A").vertices, ElementsAre(Point3{0, 0, 0}, Point3{1, 0, 0}, Point3{0, 1, 0}));
}

TEST(AseMesh, TheTransformMayFollowTheMesh) {
    const std::string other = aseTransform("Other", "7 7 7");
    const std::string own = aseTransform("A", "10 20 30");
    const std::string normals = aseBlock("MESH_NORMALS", "*MESH_FACENORMAL 0 0 0 1\n");
    const std::string mesh = aseTriangle(kChannel + normals);
    const std::string turning = aseTransform("A", "0 0 0", "-1");
    struct Case {
        std::string first;
        std::string later;
    };
    const Case cases[] = {
        {own + mesh, mesh + own}, {own + other + mesh, other + mesh + own}, {turning + mesh, mesh + turning}};
    const auto read = [](const std::string& parts) {
        return readAseText(kAseHeader + aseBlock("GEOMOBJECT", aseName("A") + parts));
    };
    for (const auto& [first, later] : cases)
        EXPECT_EQ(read(first).scene, read(later).scene) << later;
}

// Of a node that mirrors along x; the triangle lies in the node's space with its normal up or down.
std::string mirrored(const std::string& normal) {
    const std::string normals =
        aseBlock("MESH_NORMALS",
                 "*MESH_FACENORMAL 0 " + normal + "\n*MESH_VERTEXNORMAL 0 0 0 1\n*MESH_FACENORMAL 7 0 0 9\n");
    return kAseHeader + aseBlock("GEOMOBJECT", aseName("A") + aseTransform("A", "0 0 0", "-1") +
                                                   aseTriangle(kChannel + (normal.empty() ? "" : normals)));
}

TEST(AseMesh, FacesOfAMirroredNodeFollowTheNormalsOfTheFile) {
    // In the node's space the corners run clockwise, so their normal points down.
    for (const char* kept : {"0 0 -1", "", "1.#QNAN 0 0"}) {
        const ReadAse read = readAseText(mirrored(kept));
        EXPECT_THAT(read.mesh(u"A").faces, ElementsAre(FaceIndices{0, 1, 2})) << kept;
        EXPECT_EQ(read.notesOf("room.ase", "on a node that mirrors"), 0);
    }
    const ReadAse turned = readAseText(mirrored("0 0 1"));
    EXPECT_THAT(turned.mesh(u"A").faces, ElementsAre(FaceIndices{0, 2, 1}));
    EXPECT_THAT(turned.mesh(u"A").maps.at(1).faces, ElementsAre(FaceIndices{2, 1, 0}));
    EXPECT_EQ(turned.notesOf("room.ase", "1 mesh (\"A\") has faces that oppose their normals"), 1);
}

TEST(AseMesh, OfNodesThatDoNotMirrorTheNormalsDoNotCount) {
    const std::string normals = aseBlock("MESH_NORMALS", "*MESH_FACENORMAL 0 0 0 -1\n");
    EXPECT_THAT(meshOf(aseTriangle(normals)).faces, ElementsAre(FaceIndices{0, 1, 2}));
}

TEST(AseMesh, VerticesThatAreNoPointsTakeTheirFacesWithThem) {
    const std::string mesh =
        aseBlock("MESH",
                 "*MESH_NUMVERTEX 4\n*MESH_NUMFACES 2\n*MESH_VERTEX_LIST {\n*MESH_VERTEX 0 0 0 "
                 "0\n*MESH_VERTEX 1 1 0 0\n"
                 "*MESH_VERTEX 2 0 1 0\n*MESH_VERTEX 3 1.#QNAN 0 0\n}\n*MESH_FACE_LIST {\n"
                 "*MESH_FACE 0: A: 0 B: 1 C: 3 *MESH_SMOOTHING 1 *MESH_MTLID 1\n"
                 "*MESH_FACE 1: A: 0 B: 1 C: 2 *MESH_SMOOTHING 2 *MESH_MTLID 2\n}\n"
                 "*MESH_NUMTVERTEX 2\n*MESH_TVERTLIST {\n*MESH_TVERT 0 -1.#IND 1 1\n*MESH_TVERT 1 1 1 1\n}\n"
                 "*MESH_NUMTVFACES 2\n*MESH_TFACELIST {\n*MESH_TFACE 0 0 0 0\n*MESH_TFACE 1 1 0 1\n}\n");
    const ReadAse read = readAseText(kAseHeader + aseMeshObject("A", mesh));
    const SnapshotMesh& found = read.mesh(u"A");
    EXPECT_THAT(found.vertices,
                ElementsAre(Point3{0, 0, 0}, Point3{1, 0, 0}, Point3{0, 1, 0}, Point3{0, 0, 0}));
    EXPECT_THAT(found.faces, ElementsAre(FaceIndices{0, 1, 2}));
    EXPECT_THAT(found.smoothing, ElementsAre(2U));
    EXPECT_THAT(found.materialIds, ElementsAre(2));
    EXPECT_THAT(found.maps.at(1).vertices, ElementsAre(Point3{0, 0, 0}, Point3{1, 1, 1}));
    EXPECT_THAT(found.maps.at(1).faces, ElementsAre(FaceIndices{1, 0, 1}));
    EXPECT_EQ(read.notesOf("room.ase", "1 mesh (\"A\") has 1 triangles with coordinates that are not finite"),
              1);
    EXPECT_EQ(read.notesOf("room.ase", "1 mesh (\"A\") has 1 texture coordinates"), 1);
}

TEST(AseMesh, AMeshMayBeEmpty) {
    const SnapshotMesh mesh = meshOf(aseBlock("MESH", "*MESH_NUMVERTEX 0\n*MESH_NUMFACES 0\n"));
    EXPECT_TRUE(mesh.vertices.empty());
    EXPECT_TRUE(mesh.faces.empty());
}

}  // namespace
}  // namespace velinor
