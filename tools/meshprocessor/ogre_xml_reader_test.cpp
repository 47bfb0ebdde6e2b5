#include "tools/meshprocessor/ogre_xml_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "platform/temporary_folder.h"
#include "tools/meshprocessor/mesh_test_support.h"

namespace velinor {
namespace {

class OgreXmlReader : public testing::Test {
  protected:
    TriangleMesh read(const std::string& text) const {
        const std::filesystem::path file = folder_.path() / "a.mesh.xml";
        std::ofstream(file, std::ios::binary) << text;
        return readOgreXml(file);
    }
    // What is said of `text`, without the path before the place.
    std::string faultOf(const std::string& text) const {
        try {
            read(text);
        } catch (const MeshError& error) {
            const std::string fault = error.what();
            const std::size_t at = fault.find("a.mesh.xml:");
            return at == std::string::npos ? fault : fault.substr(at + std::string("a.mesh.xml:").size());
        }
        return "no fault";
    }

    TemporaryFolder folder_;
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST_F(OgreXmlReader, ReadsPointsAndFaces) {
    const TriangleMesh box = boxMesh({-1.5F, -2, 0}, {1, 2, 0.25F});
    EXPECT_EQ(read(ogreXmlOf(box)), box);
}

TEST_F(OgreXmlReader, ReadsAllSubmeshesAndSkipsTheRest) {
    const TriangleMesh mesh = read(
        "<mesh><sharedgeometry vertexcount='4'><vertexbuffer positions='true'>"
        "<vertex><position x='0' y='0' z='0'/></vertex><vertex><position x='1' y='0' z='-0.0'/></vertex>"
        "<vertex><position x='0' y='1e0' z='0'/></vertex><vertex><position x='0' y='0' z='1'/></vertex>"
        "</vertexbuffer><vertexbuffer texture_coords='1'><vertex><texcoord u='0' v='0'/></vertex>"
        "</vertexbuffer></sharedgeometry><submeshes>"
        "<submesh><faces count='1'><face v1='0' v2='1' v3='2'/></faces><textures><position x='a'/></textures>"
        "</submesh><submesh operationtype='triangle_list'><faces><face v1='0' v2='3' "
        "v3='1'/></faces></submesh>"
        "</submeshes><boneassignments><face v1='99'/></boneassignments></mesh>");
    EXPECT_EQ(mesh.points, (std::vector<Point>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    EXPECT_EQ(mesh.faces, (Faces{{0, 1, 2}, {0, 3, 1}}));
    EXPECT_FALSE(std::signbit(mesh.points[1][2]));
}

TEST_F(OgreXmlReader, KeepsElementsThatLieAcrossPieces) {
    const TriangleMesh grid = gridMesh(120, [](float, float) { return 0.5F; });  // 2 MB of text
    EXPECT_EQ(read(ogreXmlOf(grid)).faces, grid.faces);
}

TEST_F(OgreXmlReader, NamesThePlaceOfAFault) {
    const std::string box = ogreXmlOf(boxMesh());
    struct Case {
        const char* from;
        const char* to;
        const char* fault;
    };
    for (const auto& [from, to, fault] : {
             Case{"x=\"-0.500000\"", "x=\"nan\"",
                  "6:5: attribute x of <position> is \"nan\", not a finite 32-bit number"},
             Case{"x=\"-0.500000\"", "x=\"-inf\"",
                  "6:5: attribute x of <position> is \"-inf\", not a finite 32-bit number"},
             Case{"x=\"-0.500000\"", "x=\"1e39\"",
                  "6:5: attribute x of <position> is \"1e39\", not a finite 32-bit number"},
             Case{"x=\"-0.500000\"", "x=\"0,5\"", "6:5: attribute x of <position> is \"0,5\", not a number"},
             Case{"x=\"-0.500000\"", "x=\"\"", "6:5: attribute x of <position> is \"\", not a number"},
             Case{"x=\"-0.500000\"", "", "6:5: attribute x of <position> is missing"},
             Case{"v1=\"0\"", "v1=\"8\"",
                  "42:5: the face refers to vertex 8, but the shared geometry before it has 8 vertices, "
                  "counted "
                  "from 0"},
             Case{"v1=\"0\"", "v1=\"-1\"",
                  "42:5: attribute v1 of <face> is \"-1\", not a whole number of 0 to 4294967295"},
             Case{"v1=\"0\"", "v1=\"4294967296\"",
                  "42:5: attribute v1 of <face> is \"4294967296\", not a whole number of 0 to 4294967295"},
             Case{"vertexcount=\"8\"", "vertexcount=\"9\"",
                  "38:2: 9 vertices are announced, but there are 8"},
             Case{"count=\"12\"", "count=\"13\"", "54:4: 13 faces are announced, but there are 12"},
             Case{"triangle_list", "line_list",
                  "40:3: the submesh is a \"line_list\"; only \"triangle_list\" can be used"},
             Case{"<faces ", "<geometry vertexcount=\"3\"/><faces ",
                  "41:4: the submesh has vertices of its own; write the mesh with shared vertices only"},
             Case{"<mesh>", "<scene>", "2:1: the outermost element is <scene>, not <mesh>"},
             Case{"</faces>", "</wrong>", "54:6: mismatched tag"},
         }) {
        EXPECT_EQ(faultOf(replaced(box, from, to)), fault) << from << " -> " << to;
    }
    EXPECT_EQ(faultOf(""), "1:1: no element found");
    EXPECT_EQ(faultOf(box.substr(0, box.size() / 2)).substr(0, 3), "30:");
    EXPECT_EQ(faultOf(std::string("\0\0\0\0", 4)), "1:1: not well-formed (invalid token)");
}

TEST_F(OgreXmlReader, TakesDeepDocuments) {
    std::string text = "<mesh>";
    for (int i = 0; i < 200'000; ++i)
        text += "<a>";
    EXPECT_THAT(faultOf(text), testing::HasSubstr("no element found"));
}

TEST_F(OgreXmlReader, TellsOfFilesThatCannotBeRead) {
    try {
        readOgreXml(folder_.path() / "none.xml");
        FAIL();
    } catch (const MeshError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("none.xml: No such file or directory"));
    }
    EXPECT_THROW(readOgreXml(folder_.path()), MeshError);
}

}  // namespace
}  // namespace velinor
