#include "geometry/ogre_mesh_text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>
#include <utility>

#include "descriptors/element_tree.h"
#include "geometry/vertex_normal.h"
#include "geometry/weld_rule.h"
#include "geometry/xml_text.h"
#include "hosts/snapshot/snapshot_host.h"
#include "scene/transform.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

using host::Point3;

// The mesh of a scene's only node, as a host gives it.
class HostMesh {
  public:
    explicit HostMesh(SnapshotMesh mesh) {
        scene_.meshes.push_back(std::move(mesh));
        scene_.nodes.push_back(
            {.name = u"n",
             .object = SnapshotObject{.type = host::IGameObject::IGAME_MESH, .mesh = SnapshotRef{0}}});
        scene_.roots.push_back(0);
        host_ = makeSnapshotHost(scene_, "");
        host::Object* object =
            host_->GetIGameInterface()->GetTopLevelNode(0)->GetMaxNode()->EvalWorldState(0);
        mesh_ = &object->ConvertToTriObject(0)->GetMesh();
        mesh_->buildNormals();
    }

    const host::Mesh& get() const { return *mesh_; }

  private:
    SceneSnapshot scene_;
    std::unique_ptr<host::Host> host_;
    host::Mesh* mesh_;
};

MeshMaterials namesOf(const std::map<std::int32_t, std::string>& names) {
    MeshMaterials materials;
    for (const auto& [id, name] : names) {
        materials.materialNames[id] = {name, ""};
        materials.maxMaterialId = std::max(materials.maxMaterialId, id);
    }
    return materials;
}

std::string textOf(const host::Mesh& mesh, MeshMaterials materials) {
    NoProgress nobody;
    StepProgress progress(nobody, 1, mesh.faces().size());
    const MeshGeometry geometry = weldMesh(mesh, materials, progress);
    StringSink sink;
    writeOgreMeshText(geometry, materials, mesh.getNumMaps(), sink);
    return sink.text();
}

std::string textOf(SnapshotMesh mesh, const std::map<std::int32_t, std::string>& names = {{0, "default"}}) {
    return textOf(HostMesh(std::move(mesh)).get(), namesOf(names));
}

// A triangle at different places on each axis.
SnapshotMesh triangle() {
    return {.vertices = {{0, 0, 0}, {1, 2, 0}, {0, 2, 3}}, .faces = {{0, 1, 2}}};
}

// --- The same text by the rules as they read: a multimap for the weld, and an element for every vertex and
// face.

std::string fixed(float value) {
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%f", static_cast<double>(value));
    return buffer;
}

struct PlainVertex {
    Point3 position;
    Point3 normal;
    std::vector<TexCoord> texCoords;
};

class PlainWriter {
  public:
    PlainWriter(const host::Mesh& mesh, MeshMaterials materials)
        : mesh_(mesh), materials_(std::move(materials)) {}

    std::string text() {
        for (std::uint32_t f = 0; f < mesh_.faces().size(); ++f)
            takeFace(f);
        ElementTreeBuilder tree;
        tree.addSibling("mesh");
        tree.addChild("sharedgeometry", {{"vertexcount", std::to_string(vertexList_.size())}});
        tree.addChild("vertexbuffer", {{"binormals", "false"},
                                       {"colours_diffuse", "false"},
                                       {"normals", "true"},
                                       {"positions", "true"},
                                       {"tangents", "false"},
                                       {"texture_coords", std::to_string(mesh_.getNumMaps() - 1)}});
        addVertices(tree);
        tree.ascend();
        tree.addSibling("submeshes");
        addSubmeshes(tree);
        tree.addSibling("submeshnames");
        addNames(tree);
        StringSink sink;
        toXmlText(tree.elements(), sink);
        return sink.text();
    }

  private:
    TexCoord texCoord(int channel, std::uint32_t face, std::size_t corner) const {
        if (mesh_.mapVerts(channel).empty() || mesh_.mapFaces(channel).empty()) return {};
        const auto& value = mesh_.mapVerts(channel)[mesh_.mapFaces(channel)[face].t[corner]];
        return {value.x, 1 - value.y};
    }

    PlainVertex vertexAt(std::uint32_t f, std::size_t corner) const {
        const host::Face& face = mesh_.faces()[f];
        const std::uint32_t v = face.v[corner];
        const Point3 normal = vertexNormal(mesh_, mesh_.getRVertex(v), f, face.smGroup);
        PlainVertex vertex{toPackagePoint(mesh_.verts()[v]), Normalize(toPackagePoint(normal)), {}};
        if (!mesh_.mapVerts(1).empty() || mesh_.getNumMaps() >= 2)
            vertex.texCoords.push_back(texCoord(1, f, corner));
        for (int channel = 2; channel < mesh_.getNumMaps(); ++channel)
            vertex.texCoords.push_back(texCoord(channel, f, corner));
        return vertex;
    }

    std::uint32_t weld(const PlainVertex& vertex) {
        const auto [begin, end] = weldIndex_.equal_range(weldKey(vertex.position));
        for (auto i = begin; i != end; ++i) {
            const PlainVertex& other = vertexList_[i->second];
            if (isSameVertex({other.position, other.normal, other.texCoords},
                             {vertex.position, vertex.normal, vertex.texCoords})) {
                return i->second;
            }
        }
        const auto index = static_cast<std::uint32_t>(vertexList_.size());
        vertexList_.push_back(vertex);
        weldIndex_.emplace(weldKey(vertex.position), index);
        return index;
    }

    void takeFace(std::uint32_t f) {
        std::array<std::uint32_t, 3> indices{};
        for (std::size_t corner = 0; corner < 3; ++corner)
            indices[corner] = weld(vertexAt(f, corner));
        const int id = mesh_.faces()[f].getMatID();
        const auto remapped = materials_.idRemap.find(id);
        submeshFaces_[std::min(remapped == materials_.idRemap.end() ? id : remapped->second,
                               materials_.maxMaterialId)]
            .push_back(indices);
    }

    void addVertices(ElementTreeBuilder& tree) const {
        for (std::size_t i = 0; i < vertexList_.size(); ++i) {
            const auto& [p, n, texCoords] = vertexList_[i];
            i == 0 ? tree.addChild("vertex") : tree.addSibling("vertex");
            tree.addChild("position", {{"x", fixed(p.x)}, {"y", fixed(p.y)}, {"z", fixed(p.z)}});
            tree.addSibling("normal", {{"x", fixed(n.x)}, {"y", fixed(n.y)}, {"z", fixed(n.z)}});
            for (const TexCoord& t : texCoords)
                tree.addSibling("texcoord", {{"u", fixed(t.u)}, {"v", fixed(t.v)}});
            tree.ascend();
        }
        if (!vertexList_.empty()) tree.ascend();
    }

    void addSubmeshes(ElementTreeBuilder& tree) {
        bool isFirst = true;
        for (const auto& [id, faces] : submeshFaces_) {
            const Attributes attributes{{"material", materials_.materialNames[id].scriptName},
                                        {"operationtype", "triangle_list"},
                                        {"use32bitindexes", "True"},
                                        {"usesharedvertices", "true"}};
            isFirst ? tree.addChild("submesh", attributes) : tree.addSibling("submesh", attributes);
            isFirst = false;
            tree.addChild("faces", {{"count", std::to_string(faces.size())}});
            for (std::size_t i = 0; i < faces.size(); ++i) {
                const Attributes corners{{"v1", std::to_string(faces[i][0])},
                                         {"v2", std::to_string(faces[i][1])},
                                         {"v3", std::to_string(faces[i][2])}};
                i == 0 ? tree.addChild("face", corners) : tree.addSibling("face", corners);
            }
            tree.ascend();
            tree.ascend();
        }
        if (!isFirst) tree.ascend();
    }

    void addNames(ElementTreeBuilder& tree) const {
        bool isFirst = true;
        for (const auto& [id, variant] : materials_.materialNames) {
            const Attributes attributes{{"index", std::to_string(id)}, {"name", variant.scriptName}};
            isFirst ? tree.addChild("submeshname", attributes) : tree.addSibling("submeshname", attributes);
            isFirst = false;
        }
    }

    const host::Mesh& mesh_;
    MeshMaterials materials_;
    std::vector<PlainVertex> vertexList_;
    std::multimap<std::int32_t, std::uint32_t> weldIndex_;
    std::map<std::int32_t, std::vector<std::array<std::uint32_t, 3>>> submeshFaces_;
};

// Small meshes in which much coincides: few positions, few texture coordinates, all kinds of normals.
class RandomMesh {
  public:
    explicit RandomMesh(unsigned seed) : random_(seed) {}

    SnapshotMesh make() {
        SnapshotMesh mesh;
        const std::size_t vertexCount = 1 + below(12);
        for (std::size_t i = 0; i < vertexCount; ++i)
            mesh.vertices.push_back({coordinate(), coordinate(), coordinate()});
        const std::size_t faceCount = below(24);
        for (std::size_t f = 0; f < faceCount; ++f)
            mesh.faces.push_back(face(vertexCount));
        if (coin()) mesh.smoothing = perFace<std::uint32_t>(faceCount, 5);
        if (coin()) mesh.materialIds = perFace<std::uint16_t>(faceCount, 6);
        if (below(4) == 0) addSpecifiedNormals(mesh);
        addMaps(mesh, faceCount);
        return mesh;
    }

    MeshMaterials makeMaterials() {
        MeshMaterials materials = namesOf({{0, "a"}});
        for (std::int32_t id = 1; id < 5; ++id) {
            if (coin()) materials.materialNames[id] = {"m" + std::to_string(id), ""};
            if (below(4) == 0) materials.idRemap[id] = id - 1;
        }
        materials.maxMaterialId = materials.materialNames.rbegin()->first;
        return materials;
    }

  private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    bool coin() { return below(2) == 0; }

    float coordinate() {
        constexpr float kValues[] = {0, -0.0F, 1, -1, 0.1F, 4e-9F, 0.1000001F, 123.4567F, -1e-7F, 2.5e6F};
        constexpr float kSpecial[] = {std::numeric_limits<float>::quiet_NaN(),
                                      std::numeric_limits<float>::infinity(), -3.4e38F};
        return below(60) == 0 ? kSpecial[below(3)] : kValues[below(std::size(kValues))];
    }

    FaceIndices face(std::size_t count) {
        const auto index = [&] { return static_cast<std::uint32_t>(below(count)); };
        return {index(), index(), index()};
    }

    template <class T>
    std::vector<T> perFace(std::size_t count, std::size_t limit) {
        std::vector<T> values;
        for (std::size_t i = 0; i < count; ++i)
            values.push_back(static_cast<T>(below(limit)));
        return values;
    }

    void addSpecifiedNormals(SnapshotMesh& mesh) {
        for (std::size_t i = 0; i < mesh.vertices.size(); ++i)
            mesh.specifiedNormals.push_back({coordinate(), coordinate(), coordinate()});
    }

    void addMaps(SnapshotMesh& mesh, std::size_t faceCount) {
        for (std::int32_t channel = 1; channel <= 3; ++channel) {
            if (coin()) continue;
            SnapshotMapChannel map;
            const std::size_t count = 1 + below(5);
            for (std::size_t i = 0; i < count; ++i)
                map.vertices.push_back({coordinate(), coordinate(), coordinate()});
            for (std::size_t f = 0; coin() && f < faceCount; ++f)
                map.faces.push_back(face(count));
            if (map.faces.size() != faceCount) map.faces.clear();
            mesh.maps[channel] = map;
        }
        if (coin()) mesh.mapChannels = static_cast<std::int32_t>(below(6));
    }

    std::mt19937 random_;
};

// The sign of a not-a-number is the compiler's choice, and that for Windows chooses differently for the two
// texts.
std::string withoutSignsOfNan(std::string text) {
    constexpr std::string_view kSigned = "\"-nan\"";
    for (std::size_t at = 0; kIsWindows && (at = text.find(kSigned, at)) != std::string::npos;)
        text.replace(at, kSigned.size(), "\"nan\"");
    return text;
}

TEST(OgreMeshText, IsWhatTheRulesSayForRandomMeshes) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        RandomMesh random(seed);
        const HostMesh mesh(random.make());
        const MeshMaterials materials = random.makeMaterials();
        ASSERT_EQ(withoutSignsOfNan(textOf(mesh.get(), materials)),
                  withoutSignsOfNan(PlainWriter(mesh.get(), materials).text()))
            << "seed " << seed;
    }
}

// --- What the rules say, spelled out.

TEST(OgreMeshText, ShowsATriangleWithoutTextureAsItIs) {
    SnapshotMesh mesh = triangle();
    mesh.mapChannels = 1;
    EXPECT_EQ(
        textOf(mesh),
        "<?xml version=\"1.0\"?>\n"
        "<mesh>\n"
        "\t<sharedgeometry vertexcount=\"3\">\n"
        "\t\t<vertexbuffer binormals=\"false\" colours_diffuse=\"false\" normals=\"true\" positions=\"true\""
        " tangents=\"false\" texture_coords=\"0\">\n"
        "\t\t\t<vertex>\n"
        "\t\t\t\t<position x=\"0.000000\" y=\"0.000000\" z=\"-0.000000\" />\n"
        "\t\t\t\t<normal x=\"0.857143\" y=\"0.285714\" z=\"0.428571\" />\n"
        "\t\t\t</vertex>\n"
        "\t\t\t<vertex>\n"
        "\t\t\t\t<position x=\"1.000000\" y=\"0.000000\" z=\"-2.000000\" />\n"
        "\t\t\t\t<normal x=\"0.857143\" y=\"0.285714\" z=\"0.428571\" />\n"
        "\t\t\t</vertex>\n"
        "\t\t\t<vertex>\n"
        "\t\t\t\t<position x=\"0.000000\" y=\"3.000000\" z=\"-2.000000\" />\n"
        "\t\t\t\t<normal x=\"0.857143\" y=\"0.285714\" z=\"0.428571\" />\n"
        "\t\t\t</vertex>\n"
        "\t\t</vertexbuffer>\n"
        "\t</sharedgeometry>\n"
        "\t<submeshes>\n"
        "\t\t<submesh material=\"default\" operationtype=\"triangle_list\" use32bitindexes=\"True\""
        " usesharedvertices=\"true\">\n"
        "\t\t\t<faces count=\"1\">\n"
        "\t\t\t\t<face v1=\"0\" v2=\"1\" v3=\"2\" />\n"
        "\t\t\t</faces>\n"
        "\t\t</submesh>\n"
        "\t</submeshes>\n"
        "\t<submeshnames>\n"
        "\t\t<submeshname index=\"0\" name=\"default\" />\n"
        "\t</submeshnames>\n"
        "</mesh>\n");
}

TEST(OgreMeshText, KeepsTheFrameOfAMeshWithoutFaces) {
    EXPECT_EQ(
        textOf(SnapshotMesh{.vertices = {{1, 2, 3}}}),
        "<?xml version=\"1.0\"?>\n"
        "<mesh>\n"
        "\t<sharedgeometry vertexcount=\"0\">\n"
        "\t\t<vertexbuffer binormals=\"false\" colours_diffuse=\"false\" normals=\"true\" positions=\"true\""
        " tangents=\"false\" texture_coords=\"1\" />\n"
        "\t</sharedgeometry>\n"
        "\t<submeshes />\n"
        "\t<submeshnames>\n"
        "\t\t<submeshname index=\"0\" name=\"default\" />\n"
        "\t</submeshnames>\n"
        "</mesh>\n");
}

std::size_t countOf(const std::string& text, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
        ++count;
    return count;
}

bool has(const std::string& text, const std::string& piece) {
    return countOf(text, piece) > 0;
}

TEST(OgreMeshText, CountsTextureCoordinatesByTheHostsChannels) {
    SnapshotMesh mesh = triangle();
    for (const auto& [channels, shown, perVertex] :
         {std::tuple{0, "-1", 0U}, {1, "0", 0U}, {2, "1", 1U}, {4, "3", 3U}}) {
        mesh.mapChannels = channels;
        const std::string text = textOf(mesh);
        EXPECT_TRUE(has(text, "texture_coords=\"" + std::string(shown) + "\"")) << channels;
        EXPECT_EQ(countOf(text, "<texcoord u=\"0.000000\" v=\"0.000000\" />"), 3 * perVertex) << channels;
    }
}

TEST(OgreMeshText, WritesChannelOneWhereItHasVerticesWhateverTheCount) {
    SnapshotMesh mesh = triangle();
    mesh.maps[1] = {.vertices = {{0.25F, 0.25F, 9}}, .faces = {{0, 0, 0}}};
    mesh.mapChannels = 0;
    const std::string text = textOf(mesh);
    EXPECT_TRUE(has(text, "texture_coords=\"-1\""));
    EXPECT_EQ(countOf(text, "<texcoord u=\"0.250000\" v=\"0.750000\" />"), 3U) << "v points down";
}

TEST(OgreMeshText, WritesZerosForAChannelWithVerticesButWithoutFaces) {
    SnapshotMesh mesh = triangle();
    mesh.maps[1] = {.vertices = {{0.25F, 0.25F, 0}}, .faces = {}};
    EXPECT_EQ(countOf(textOf(mesh), "<texcoord u=\"0.000000\" v=\"0.000000\" />"), 3U);
}

// Twelve triangles with one normal a side and one texture square a side.
SnapshotMesh box() {
    SnapshotMesh mesh;
    for (const float z : {0.0F, 1.0F}) {
        for (const float y : {0.0F, 1.0F}) {
            for (const float x : {0.0F, 1.0F})
                mesh.vertices.push_back({x, y, z});
        }
    }
    constexpr std::array<std::array<std::uint32_t, 4>, 6> kSides{
        {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {1, 3, 7, 5}, {3, 2, 6, 7}, {2, 0, 4, 6}}};
    SnapshotMapChannel map{.vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, .faces = {}};
    for (std::uint32_t side = 0; side < kSides.size(); ++side) {
        const auto& [a, b, c, d] = kSides[side];
        mesh.faces.push_back({a, b, c});
        mesh.faces.push_back({c, d, a});
        map.faces.push_back({0, 1, 2});
        map.faces.push_back({2, 3, 0});
        mesh.smoothing.insert(mesh.smoothing.end(), 2, 1U << side);
    }
    mesh.maps[1] = map;
    return mesh;
}

TEST(OgreMeshText, SplitsTheVerticesOfABoxAtItsEdges) {
    const std::string text = textOf(box(), {{0, "Brick"}});
    EXPECT_TRUE(has(text, "vertexcount=\"24\""));
    EXPECT_EQ(countOf(text, "<submesh material=\"Brick\""), 1U);
    EXPECT_TRUE(has(text, "<faces count=\"12\">"));
    EXPECT_TRUE(has(text, "<submeshname index=\"0\" name=\"Brick\" />"));
}

TEST(OgreMeshText, KeepsTheVerticesOfABoxThatIsSmoothAllOver) {
    SnapshotMesh mesh = box();
    mesh.smoothing.assign(12, 1);
    mesh.maps.clear();
    EXPECT_TRUE(has(textOf(mesh), "vertexcount=\"8\""));
}

TEST(OgreMeshText, SplitsVerticesWhereTextureCoordinatesDiffer) {
    SnapshotMesh mesh{.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}},
                      .faces = {{0, 1, 2}, {2, 1, 3}}};
    EXPECT_TRUE(has(textOf(mesh), "vertexcount=\"4\""));
    mesh.maps[1] = {.vertices = {{0, 0, 0}, {1, 1, 0}}, .faces = {{0, 0, 0}, {0, 1, 0}}};
    EXPECT_TRUE(has(textOf(mesh), "vertexcount=\"5\""));
}

TEST(OgreMeshText, NamesSubmeshesByMaterialId) {
    SnapshotMesh mesh{.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
                      .faces = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}},
                      .materialIds = {4, 1, 3, 9}};
    MeshMaterials materials = namesOf({{1, "one"}, {3, "three"}, {5, "unused"}});
    materials.idRemap[3] = 1;
    const std::string text = textOf(HostMesh(mesh).get(), materials);
    const std::size_t one = text.find("<submesh material=\"one\"");
    const std::size_t four = text.find("<submesh material=\"\"");
    const std::size_t five = text.find("<submesh material=\"unused\"");
    EXPECT_LT(one, four);
    EXPECT_LT(four, five);
    EXPECT_TRUE(has(text,
                    "<faces count=\"2\">\n\t\t\t\t<face v1=\"1\" v2=\"2\" v3=\"0\" />\n"
                    "\t\t\t\t<face v1=\"2\" v2=\"0\" v3=\"1\" />\n"))
        << "in the order of the host's faces";
    EXPECT_TRUE(has(text,
                    "\t\t<submeshname index=\"1\" name=\"one\" />\n"
                    "\t\t<submeshname index=\"3\" name=\"three\" />\n"
                    "\t\t<submeshname index=\"4\" name=\"\" />\n"
                    "\t\t<submeshname index=\"5\" name=\"unused\" />\n"));
}

// Throws at one of the pieces of text, as a request to stop does.
class ThrowingSink final : public TextSink {
  public:
    explicit ThrowingSink(int pieces) : left_(pieces) {}

    void write(std::string_view /*text*/) override {
        if (left_-- == 0) throw std::runtime_error("stop");
    }

  private:
    int left_;
};

TEST(OgreMeshText, LetsTheSinkThrowAtEveryPiece) {
    SnapshotMesh mesh{.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    mesh.faces.assign(5000, {0, 1, 2});
    const HostMesh host(mesh);
    NoProgress nobody;
    StepProgress progress(nobody, 1, 5000);
    MeshMaterials materials = namesOf({{0, "a"}});
    const MeshGeometry geometry = weldMesh(host.get(), materials, progress);
    int pieces = 0;
    for (bool hasThrown = true; hasThrown; ++pieces) {
        ThrowingSink sink(pieces);
        hasThrown = false;
        try {
            writeOgreMeshText(geometry, materials, 2, sink);
        } catch (const std::runtime_error&) {
            hasThrown = true;
        }
    }
    EXPECT_GT(pieces, 5) << "frame, vertices, and faces in several pieces";
}

TEST(OgreMeshText, CountsIndicesBeyondSixteenBits) {
    SnapshotMesh mesh;
    for (std::uint32_t i = 0; i < 25000; ++i) {
        const auto x = static_cast<float>(i);
        mesh.vertices.insert(mesh.vertices.end(), {{x, 0, 0}, {x, 1, 0}, {x, 0, 1}});
        mesh.faces.push_back({3 * i, 3 * i + 1, 3 * i + 2});
    }
    const std::string text = textOf(mesh);
    EXPECT_TRUE(has(text, "vertexcount=\"75000\""));
    EXPECT_TRUE(has(text, "<face v1=\"74997\" v2=\"74998\" v3=\"74999\" />"));
}

}  // namespace
}  // namespace velinor
