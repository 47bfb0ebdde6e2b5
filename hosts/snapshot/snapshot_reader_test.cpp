// What snapshots may hold and how each broken rule is told, in JSON.
#include <gtest/gtest.h>

#include <string>

#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

SceneSnapshot readJson(std::string_view text) {
    return readSnapshot(text, SnapshotEncoding::json, "s.json");
}

std::string errorOf(std::string_view text) {
    try {
        readJson(text);
    } catch (const SceneError& error) {
        return error.what();
    }
    return "no error";
}

// A document with these further members.
std::string document(const std::string& members) {
    return R"({"format": "tolvex-scene", "version": 1, )" + members + "}";
}

std::string withNode(const std::string& members) {
    return document(R"("nodes": [{"name": "A")" + members + R"(}], "roots": [0])");
}

std::string withObject(const std::string& object) {
    return withNode(R"(, "object": )" + object);
}

std::string withMesh(const std::string& members, const std::string& vertices = "[0,0,0, 1,0,0, 0,1,0]",
                     const std::string& faces = "[0,1,2]") {
    return document(R"("nodes": [], "roots": [], "meshes": [{"vertices": )" + vertices + R"(, "faces": )" +
                    faces + members + "}]");
}

std::string withMaterial(const std::string& members) {
    return document(R"("nodes": [], "roots": [], "materials": [{"class": "Standard", "name": "M")" + members +
                    R"(}], "maps": [{"class": "Bitmap"}])");
}

std::string withMap(const std::string& map) {
    return document(R"("nodes": [], "roots": [], "maps": [)" + map + "]");
}

TEST(ReadSnapshot, FillsDefaults) {
    const SceneSnapshot scene = readJson(withNode(R"(, "object": {"type": "light"})"));
    EXPECT_EQ(scene.animationStart, 0);
    ASSERT_EQ(scene.nodes.size(), 1U);
    EXPECT_EQ(scene.nodes[0].worldTransform, host::GMatrix());
    EXPECT_FALSE(scene.nodes[0].instances);
    EXPECT_EQ(scene.nodes[0].object->type, 1);
    EXPECT_FALSE(scene.nodes[0].object->light);
}

TEST(ReadSnapshot, ReadsEveryMember) {
    const SceneSnapshot scene = readJson(R"({
      "roots": [1], "extras": {"any": [1, {"thing": null}]},
      "nodes": [
        {"name": "Кот \u0041", "worldTransform": [[1,2,3],[4,5,6],[7,8,9],[10,11,12.5]], "hidden": true,
         "layerHidden": true, "selected": true, "instances": [1, 0], "userProperties": {"k": -5, "extras": "x"},
         "material": 0, "extras": [],
         "object": {"type": 2, "className": "C", "boundingBox": {"min": [1,2,3], "max": [4,5,6]}, "mesh": 0,
                    "faceCount": -7, "parameters": {"north": 1.5}}},
        {"name": "", "children": [0, 2], "instances": [], "material": null, "object": null},
        {"name": "L", "object": {"type": -3, "extras": 1}}],
      "meshes": [{"vertices": [0,0,0, 1,0,0, 0,1,0], "faces": [0,1,2.0], "smoothing": [4294967295],
        "materialIds": [65535], "activeMaterialIds": [3, 1], "mapChannels": 0,
        "maps": {"1": {"vertices": [1,2,3], "faces": [0,0,0]}, "0": {"vertices": []}, "extras": 3},
        "specifiedNormals": [1,0,0, 0,1,0, 0,0,1],
        "renderVertices": [null, {"specified": [1,0,0]}, {"normals": [{"normal": [0,0,1], "smoothing": 6}]}]}],
      "materials": [{"class": "Standard", "name": "M", "subMaterials": [{"id": 4, "material": null}],
        "properties": [{"name": "a", "value": 0.1}, {"name": "b", "value": [1,2,3]}, {"name": "c", "value": [1,2,3,4]},
                       {"name": "d", "value": "t"}, {"name": "e", "map": 1}, {"name": "f", "map": null}],
        "diffuse": [1,2,3], "opacity": 0.5, "glossiness": 0.25, "specular": [1,1,1],
        "textureMaps": [{"slot": 8, "map": 0}]}],
      "maps": [{"class": "Bitmap", "bitmap": "a.png"}, {"class": "Normal Bump", "subMaps": [0, null]}],
      "assetFolders": ["x", "y"], "animationStart": -160, "version": 1, "format": "tolvex-scene"})");
    EXPECT_EQ(scene.animationStart, -160);
    EXPECT_EQ(scene.assetFolders, (std::vector<std::u16string>{u"x", u"y"}));
    EXPECT_EQ(scene.roots, std::vector<SnapshotRef>{1});
    const SnapshotNode& node = scene.nodes.at(0);
    EXPECT_EQ(node.name, u"Кот A");
    EXPECT_EQ(node.worldTransform,
              host::GMatrix({1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12.5F, 1}));
    EXPECT_TRUE(node.hidden && node.layerHidden && node.selected);
    EXPECT_EQ(node.instances->nodes(), (std::vector<SnapshotRef>{1, 0}));
    EXPECT_EQ(node.userProperties, (std::map<std::u16string, std::int32_t>{{u"k", -5}}));
    EXPECT_EQ(node.material, 0U);
    EXPECT_EQ(node.object->className, u"C");
    EXPECT_EQ(node.object->boundingBox, (host::Box3{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(node.object->mesh, 0U);
    EXPECT_EQ(node.object->faceCount, -7);
    EXPECT_EQ(node.object->parameters, (std::map<std::u16string, float>{{u"north", 1.5F}}));
    EXPECT_EQ(scene.nodes.at(1).children, (std::vector<SnapshotRef>{0, 2}));
    EXPECT_TRUE(scene.nodes.at(1).instances->nodes().empty());
    EXPECT_EQ(scene.nodes.at(2).object->type, -3);
    const SnapshotMesh& mesh = scene.meshes.at(0);
    EXPECT_EQ(mesh.vertices.at(2), (host::Point3{0, 1, 0}));
    EXPECT_EQ(mesh.faces.at(0), (FaceIndices{0, 1, 2}));
    EXPECT_EQ(mesh.smoothing, std::vector<std::uint32_t>{4294967295U});
    EXPECT_EQ(mesh.materialIds, std::vector<std::uint16_t>{65535});
    EXPECT_EQ(mesh.activeMaterialIds, (std::vector<int>{3, 1}));
    EXPECT_EQ(mesh.mapChannels, 0);
    EXPECT_EQ(mesh.maps.size(), 2U);
    EXPECT_EQ(mesh.maps.at(1), (SnapshotMapChannel{{{1, 2, 3}}, {{0, 0, 0}}}));
    EXPECT_EQ(mesh.specifiedNormals.size(), 3U);
    EXPECT_FALSE(mesh.renderVertices.at(0));
    EXPECT_EQ(mesh.renderVertices.at(1), SnapshotRenderVertex(host::Point3{1, 0, 0}));
    EXPECT_EQ(mesh.renderVertices.at(2), SnapshotRenderVertex(std::vector<host::RNormal>{{{0, 0, 1}, 6}}));
    const SnapshotMaterial& material = scene.materials.at(0);
    EXPECT_EQ(material.subMaterials, (std::vector<SnapshotSubMaterial>{{4, std::nullopt}}));
    EXPECT_EQ(material.properties, (std::vector<SnapshotProperty>{{u"a", 0.1F},
                                                                  {u"b", host::Point3{1, 2, 3}},
                                                                  {u"c", host::Point4{1, 2, 3, 4}},
                                                                  {u"d", std::u16string(u"t")},
                                                                  {u"e", SnapshotMapProperty{1}},
                                                                  {u"f", SnapshotMapProperty{}}}));
    EXPECT_EQ(material.diffuse, (host::Point3{1, 2, 3}));
    EXPECT_EQ(material.opacity, 0.5F);
    EXPECT_EQ(material.glossiness, 0.25F);
    EXPECT_EQ(std::get<host::Point3>(material.specular), (host::Point3{1, 1, 1}));
    EXPECT_EQ(material.textureMaps, (std::vector<SnapshotTextureMap>{{8, 0}}));
    EXPECT_EQ(scene.maps.at(0).bitmap, u"a.png");
    EXPECT_EQ(scene.maps.at(1).subMaps, (std::vector<std::optional<SnapshotRef>>{0, std::nullopt}));
}

TEST(ReadSnapshot, SharesEqualConsecutiveInstanceLists) {
    const SceneSnapshot scene =
        readJson(document(R"("nodes": [{"name": "A", "instances": [0, 2]}, {"name": "B"},
                             {"name": "C", "instances": [0, 2]}], "roots": [0, 1, 2])"));
    EXPECT_EQ(&scene.nodes[0].instances->nodes(), &scene.nodes[2].instances->nodes());
}

TEST(ReadSnapshot, AcceptsAByteOrderMark) {
    const std::string text = "\xEF\xBB\xBF" + withNode("");
    EXPECT_EQ(readJson(text).nodes.size(), 1U);
    EXPECT_EQ(guessSnapshotEncoding(text), SnapshotEncoding::json);
}

TEST(GuessSnapshotEncoding, LooksForTheFirstBracket) {
    EXPECT_EQ(guessSnapshotEncoding("\n {"), SnapshotEncoding::json);
    EXPECT_EQ(guessSnapshotEncoding("\xBF"), SnapshotEncoding::cbor);
    EXPECT_EQ(guessSnapshotEncoding("[]"), SnapshotEncoding::cbor);
    EXPECT_EQ(guessSnapshotEncoding(""), SnapshotEncoding::cbor);
}

struct ErrorCase {
    const char* name;
    std::string text;
    std::string error;
};

void expectErrors(std::initializer_list<ErrorCase> cases) {
    for (const ErrorCase& c : cases)
        EXPECT_EQ(errorOf(c.text), c.error) << c.name;
}

TEST(ReadSnapshot, TellsErrorsOfTheTopLevel) {
    expectErrors({
        {"empty", "", "s.json: the file is empty"},
        {"list", "[1]", "s.json: this is not a scene snapshot: an object is expected"},
        {"number", "7", "s.json: this is not a scene snapshot: an object is expected"},
        {"other format", R"({"format": "gltf"})",
         R"(s.json: /format: this is not a scene snapshot: the format is "gltf", not "tolvex-scene")"},
        {"other file", R"({"asset": {}})",
         R"(s.json: unknown member "asset"; a scene snapshot begins with "format": "tolvex-scene")"},
        {"no format", R"({"version": 1, "nodes": [], "roots": []})",
         R"(s.json: this is not a scene snapshot: the member "format" is missing)"},
        {"no version", R"({"format": "tolvex-scene", "nodes": [], "roots": []})",
         R"(s.json: the member "version" is missing)"},
        {"no nodes", document(R"("roots": [])"), R"(s.json: the member "nodes" is missing)"},
        {"no roots", document(R"("nodes": [])"), R"(s.json: the member "roots" is missing)"},
        {"version", R"({"format": "tolvex-scene", "version": 2})",
         "s.json: /version: version 2 is not known; this program reads version 1"},
        {"version of another kind", R"({"format": "tolvex-scene", "version": "1"})",
         "s.json: /version: a string where a number is expected"},
        {"format of another kind", R"({"format": 1})",
         "s.json: /format: a number where a string is expected"},
        {"misspelt", document(R"("node": [])"), R"(s.json: unknown member "node"; did you mean "nodes"?)"},
        {"twice", document(R"("nodes": [], "nodes": [])"), "s.json: /nodes: the member is there twice"},
        {"extras twice", document(R"("extras": [], "extras": [])"),
         "s.json: /extras: the member is there twice"},
        {"nodes of another kind", document(R"("nodes": {})"),
         "s.json: /nodes: an object where a list is expected"},
        {"node of another kind", document(R"("nodes": [null])"),
         "s.json: /nodes/0: null where an object is expected"},
        {"animationStart", document(R"("animationStart": 2147483648)"),
         "s.json: /animationStart: 2147483648 is out of range (-2147483648 to 2147483647)"},
        {"assetFolders", document(R"("assetFolders": ["a", 1])"),
         "s.json: /assetFolders/1: a number where a string is expected"},
        {"roots", document(R"("roots": [1, true])"),
         "s.json: /roots/1: a boolean where a number is expected"},
    });
}

TEST(ReadSnapshot, TellsErrorsOfJson) {
    const std::string valid = withNode("");
    expectErrors({
        {"cut off in a node", valid.substr(0, 62),
         "s.json: /nodes/0/name: line 1, column 63 (byte 63): the document is cut off here"},
        {"cut off in the second line", "{\n  \"format\"",
         "s.json: /format: line 2, column 11 (byte 13): the document is cut off here"},
        {"trailing bytes", valid + " x",
         "s.json: line 1, column 82 (byte 82): not JSON: invalid literal; last read: '0]} x'; expected end "
         "of input"},
        {"not a value", "{\"format\": nul}",
         "s.json: /format: line 1, column 15 (byte 15): not JSON: invalid literal; last read: '\"format\": "
         "nul}'"},
        {"too large for any number", document("\"animationStart\": 1e999"),
         "s.json: /animationStart: line 1, column 64 (byte 64): the number 1e999 is too large"},
        {"invalid UTF-8", document("\"assetFolders\": [\"a\", \"\xFF\"]"),
         "s.json: /assetFolders/1: line 1, column 65 (byte 65): not JSON: invalid string: ill-formed UTF-8 "
         "byte; last "
         "read: '\"\xEF\xBF\xBD'"},
        {"lone surrogate", withNode(R"(, "material": "\ud800")"),
         "s.json: /nodes/0/material: line 1, column 85 (byte 85): not JSON: invalid string: surrogate "
         "U+D800..U+DBFF "
         "must be followed by U+DC00..U+DFFF; last read: '\"\\ud800\"'"},
    });
}

TEST(ReadSnapshot, TellsErrorsOfNodes) {
    expectErrors({
        {"no name", document(R"("nodes": [{}])"), R"(s.json: /nodes/0: the member "name" is missing)"},
        {"member twice", withNode(R"(, "name": "B")"), "s.json: /nodes/0/name: the member is there twice"},
        {"extras twice", withNode(R"(, "extras": 1, "extras": 2)"),
         "s.json: /nodes/0/extras: the member is there twice"},
        {"unknown", withNode(R"(, "colour": 1)"), R"(s.json: /nodes/0: unknown member "colour")"},
        {"misspelt", withNode(R"(, "Childs": [])"), R"(s.json: /nodes/0: unknown member "Childs")"},
        {"nearly right", withNode(R"(, "layerhidden": true)"),
         R"(s.json: /nodes/0: unknown member "layerhidden"; did you mean "layerHidden"?)"},
        {"three rows", withNode(R"(, "worldTransform": [[1,0,0],[0,1,0],[0,0,1]])"),
         "s.json: /nodes/0/worldTransform: 3 rows where 4 are expected"},
        {"long row", withNode(R"(, "worldTransform": [[1,0,0,0],[0,1,0],[0,0,1],[0,0,0]])"),
         "s.json: /nodes/0/worldTransform/0: 4 numbers where 3 are expected"},
        {"entry", withNode(R"(, "worldTransform": [[1,0,0],[0,1,0],[0,0,1],[0,0,"a"]])"),
         "s.json: /nodes/0/worldTransform/3/2: a string where a number is expected"},
        {"hidden", withNode(R"(, "hidden": 1)"),
         "s.json: /nodes/0/hidden: a number where a boolean is expected"},
        {"user property", withNode(R"(, "userProperties": {"a/b~c": 1.5})"),
         "s.json: /nodes/0/userProperties/a~1b~0c: 1.5 is not an integer"},
        {"user property twice", withNode(R"(, "userProperties": {"a": 1, "a": 2})"),
         "s.json: /nodes/0/userProperties/a: the member is there twice"},
        {"negative reference", withNode(R"(, "children": [-1])"),
         "s.json: /nodes/0/children/0: -1 is out of range (0 to 4294967295)"},
        {"child", withNode(R"(, "children": [99])"),
         "s.json: /nodes/0/children/0: node 99 does not exist (1 node)"},
        {"instance", withNode(R"(, "instances": [0, 2])"),
         "s.json: /nodes/0/instances/1: node 2 does not exist (1 node)"},
        {"material", withNode(R"(, "material": 7)"),
         "s.json: /nodes/0/material: material 7 does not exist (0 materials); write null for none"},
        {"material of another kind", withNode(R"(, "material": "M")"),
         "s.json: /nodes/0/material: a string where a reference or null is expected"},
        {"name of another kind", document(R"("nodes": [{"name": 3}])"),
         "s.json: /nodes/0/name: a number where a string is expected"},
    });
}

std::string withTree(const std::string& children, const std::string& roots) {
    std::string nodes;
    for (std::size_t start = 0; start <= children.size();) {
        const auto end = std::min(children.find(';', start), children.size());
        nodes += (nodes.empty() ? "" : ", ") + std::string(R"({"name": "N", "children": [)") +
                 children.substr(start, end - start) + "]}";
        start = end + 1;
    }
    return document("\"nodes\": [" + nodes + "], \"roots\": [" + roots + "]");
}

TEST(ReadSnapshot, TellsErrorsOfTheTree) {
    EXPECT_EQ(errorOf(withTree("1;2;", "0")), "no error");
    expectErrors({
        {"root", withTree("", "3"), "s.json: /roots/0: node 3 does not exist (1 node)"},
        {"root twice", withTree("", "0,0"), R"(s.json: /nodes/0: the node is in "roots" twice)"},
        {"root and child", withTree("1;", "0,1"),
         R"(s.json: /nodes/1: the node is in "roots" and a child of node 0, too)"},
        {"two parents", withTree("2;2;", "0,1"),
         "s.json: /nodes/2: the node is the child of two nodes (0 and 1)"},
        {"twice a child", withTree("1,1;", "0"),
         "s.json: /nodes/1: the node is twice among the children of node 0"},
        {"nowhere", withTree(";", "0"),
         R"(s.json: /nodes/1: the node is neither in "roots" nor the child of a node)"},
        {"own child", withTree(";1", "0"),
         "s.json: /nodes/1: the node is its own ancestor: upwards from it come 1, 1"},
        {"cycle with a tail", withTree(";2;3,4;1;", "0"),
         "s.json: /nodes/1: the node is its own ancestor: upwards from it come 1, 3, 2, 1"},
    });
}

TEST(ReadSnapshot, TellsErrorsOfObjects) {
    expectErrors({
        {"no type", withObject("{}"), R"(s.json: /nodes/0/object: the member "type" is missing)"},
        {"no object", withObject("[]"),
         "s.json: /nodes/0/object: a list where an object or null is expected"},
        {"type", withObject(R"({"type": "Mesch"})"),
         R"(s.json: /nodes/0/object/type: unknown object type "Mesch"; did you mean "mesh"?)"},
        {"unknown type", withObject(R"({"type": "particles"})"),
         R"(s.json: /nodes/0/object/type: unknown object type "particles"; write the host's type code as an integer)"},
        {"type of another kind", withObject(R"({"type": null})"),
         "s.json: /nodes/0/object/type: null where a string or a number is expected"},
        {"mesh missing", withObject(R"({"type": "mesh"})"),
         R"(s.json: /nodes/0/object: the member "mesh" is missing: an object of type "mesh" needs it)"},
        {"mesh of no mesh", withObject(R"({"type": 5, "mesh": 0})"),
         R"(s.json: /nodes/0/object/mesh: only an object of type "mesh" has a mesh)"},
        {"mesh reference", withObject(R"({"type": 2, "mesh": 1})"),
         "s.json: /nodes/0/object/mesh: mesh 1 does not exist (0 meshes)"},
        {"light of no light", withObject(R"({"type": "camera", "light": {}})"),
         R"(s.json: /nodes/0/object/light: only an object of type "light" has a light)"},
        {"colour", withObject(R"({"type": "light", "light": {"color": [1, 1]}})"),
         "s.json: /nodes/0/object/light/color: 2 numbers where 3 are expected"},
        {"box", withObject(R"({"type": 0, "boundingBox": {"min": [0,0,0]}})"),
         R"(s.json: /nodes/0/object/boundingBox: the member "max" is missing)"},
        {"faceCount", withObject(R"({"type": 0, "faceCount": -2147483649})"),
         "s.json: /nodes/0/object/faceCount: -2147483649 is out of range (-2147483648 to 2147483647)"},
        {"parameter", withObject(R"({"type": 0, "parameters": {"azimuth_deg": "9"}})"),
         "s.json: /nodes/0/object/parameters/azimuth_deg: a string where a number is expected"},
    });
}

TEST(ReadSnapshot, TellsErrorsOfMeshes) {
    expectErrors({
        {"no vertices", document(R"("meshes": [{"faces": []}])"),
         R"(s.json: /meshes/0: the member "vertices" is missing)"},
        {"no faces", document(R"("meshes": [{"vertices": []}])"),
         R"(s.json: /meshes/0: the member "faces" is missing)"},
        {"half a vertex", withMesh("", "[0,0]", "[]"),
         "s.json: /meshes/0/vertices: 2 numbers, where 3 a vertex are expected"},
        {"half a face", withMesh("", "[0,0,0]", "[0,0,0,0]"),
         "s.json: /meshes/0/faces: 4 numbers, where 3 a face are expected"},
        {"vertices of another kind", withMesh("", "{}", "[]"),
         "s.json: /meshes/0/vertices: an object where a list of numbers or a typed array is expected"},
        {"nested vertices", withMesh("", "[[0,0,0]]", "[]"),
         "s.json: /meshes/0/vertices: 1 numbers, where 3 a vertex are expected"},
        {"null among the vertices", withMesh("", "[0,null,0]", "[]"),
         "s.json: /meshes/0/vertices/1: null where a number is expected"},
        {"corner", withMesh("", "[0,0,0]", "[0,0,1]"),
         "s.json: /meshes/0/faces/2: vertex 1 does not exist (1 vertex)"},
        {"broken corner", withMesh("", "[0,0,0]", "[0,0.5,0]"),
         "s.json: /meshes/0/faces/1: 0.5 is not an integer"},
        {"negative corner", withMesh("", "[0,0,0]", "[0,0,-1]"),
         "s.json: /meshes/0/faces/2: -1 is out of range (0 to 4294967295)"},
        {"smoothing", withMesh(R"(, "smoothing": [4294967296])"),
         "s.json: /meshes/0/smoothing/0: 4294967296 is out of range (0 to 4294967295)"},
        {"smoothing count", withMesh(R"(, "smoothing": [1, 1])"),
         "s.json: /meshes/0/smoothing: 2 entries where 1 are expected, 1 a face"},
        {"empty smoothing", withMesh(R"(, "smoothing": [])"),
         "s.json: /meshes/0/smoothing: 0 entries where 1 are expected, 1 a face"},
        {"material ID", withMesh(R"(, "materialIds": [65536])"),
         "s.json: /meshes/0/materialIds/0: 65536 is out of range (0 to 65535)"},
        {"material IDs", withMesh(R"(, "materialIds": [])"),
         "s.json: /meshes/0/materialIds: 0 entries where 1 are expected, 1 a face"},
        {"active IDs", withMesh(R"(, "activeMaterialIds": [0, "1"])"),
         "s.json: /meshes/0/activeMaterialIds/1: a string where a number is expected"},
        {"channels", withMesh(R"(, "mapChannels": -1)"),
         "s.json: /meshes/0/mapChannels: -1 is out of range (0 to 2147483647)"},
        {"channel number", withMesh(R"(, "maps": {"01": {"vertices": []}})"),
         R"(s.json: /meshes/0/maps/01: "01" is not a channel number; write it like "0" or "12")"},
        {"channel name", withMesh(R"(, "maps": {"uv": {"vertices": []}})"),
         R"(s.json: /meshes/0/maps/uv: "uv" is not a channel number; write it like "0" or "12")"},
        {"negative channel", withMesh(R"(, "maps": {"-1": {"vertices": []}})"),
         R"(s.json: /meshes/0/maps/-1: "-1" is not a channel number; write it like "0" or "12")"},
        {"highest channel", withMesh(R"(, "maps": {"2147483647": {"vertices": []}})"),
         R"(s.json: /meshes/0/maps/2147483647: "2147483647" is not a channel number; write it like "0" or "12")"},
        {"channel twice", withMesh(R"(, "maps": {"1": {"vertices": []}, "1": {"vertices": []}})"),
         "s.json: /meshes/0/maps/1: the member is there twice"},
        {"channel without vertices", withMesh(R"(, "maps": {"1": {}})"),
         R"(s.json: /meshes/0/maps/1: the member "vertices" is missing)"},
        {"map faces", withMesh(R"(, "maps": {"1": {"vertices": [0,0,0], "faces": [0,0,0, 0,0,0]}})"),
         "s.json: /meshes/0/maps/1/faces: 2 entries where 1 are expected, 1 a face of the mesh"},
        {"map corner", withMesh(R"(, "maps": {"1": {"vertices": [0,0,0], "faces": [0,2,0]}})"),
         "s.json: /meshes/0/maps/1/faces/1: map vertex 2 does not exist (1 map vertex)"},
        {"specified normals", withMesh(R"(, "specifiedNormals": [0,0,1])"),
         "s.json: /meshes/0/specifiedNormals: 1 entries where 3 are expected, 1 a vertex"},
        {"render vertices", withMesh(R"(, "renderVertices": [null])"),
         "s.json: /meshes/0/renderVertices: 1 entries where 3 are expected, 1 a vertex"},
        {"both kinds of normal",
         withMesh(R"(, "renderVertices": [null, null, {"specified": [0,0,1], "normals": []}])"),
         R"(s.json: /meshes/0/renderVertices/2: a render vertex has either "specified" or "normals")"},
        {"no kind of normal", withMesh(R"(, "renderVertices": [null, {}, null])"),
         R"(s.json: /meshes/0/renderVertices/1: a render vertex has either "specified" or "normals")"},
        {"normal without groups",
         withMesh(R"(, "renderVertices": [{"normals": [{"normal": [0,0,1]}]}, null, null])"),
         R"(s.json: /meshes/0/renderVertices/0/normals/0: the member "smoothing" is missing)"},
    });
}

TEST(ReadSnapshot, LimitsTheNormalsOfARenderVertex) {
    const auto normals = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += std::string(i > 0 ? "," : "") + R"({"normal":[0,0,1],"smoothing":1})";
        return withMesh(R"(, "renderVertices": [{"normals": [)" + text + "]}, null, null]");
    };
    EXPECT_EQ(errorOf(normals(255)), "no error");
    EXPECT_EQ(errorOf(normals(256)),
              "s.json: /meshes/0/renderVertices/0/normals: 256 normals; a host holds at most 255");
}

TEST(ReadSnapshot, TellsErrorsOfMaterialsAndMaps) {
    expectErrors({
        {"no class", document(R"("materials": [{"name": "M"}])"),
         R"(s.json: /materials/0: the member "class" is missing)"},
        {"no name", document(R"("materials": [{"class": "M"}])"),
         R"(s.json: /materials/0: the member "name" is missing)"},
        {"sub-material",
         withMaterial(R"(, "subMaterials": [{"id": 1, "material": 0}, {"id": 2, "material": 1}])"),
         "s.json: /materials/0/subMaterials/1/material: material 1 does not exist (1 material); write null "
         "for none"},
        {"sub-material without ID", withMaterial(R"(, "subMaterials": [{"material": 0}])"),
         R"(s.json: /materials/0/subMaterials/0: the member "id" is missing)"},
        {"value and map", withMaterial(R"(, "properties": [{"name": "p", "value": 1, "map": null}])"),
         R"(s.json: /materials/0/properties/0: a property has either "value" or "map")"},
        {"neither", withMaterial(R"(, "properties": [{"name": "p"}])"),
         R"(s.json: /materials/0/properties/0: a property has either "value" or "map")"},
        {"two numbers", withMaterial(R"(, "properties": [{"name": "p", "value": [1, 2]}])"),
         "s.json: /materials/0/properties/0/value: 2 numbers where 3 or 4 are expected"},
        {"value of another kind", withMaterial(R"(, "properties": [{"name": "p", "value": true}])"),
         "s.json: /materials/0/properties/0/value: a boolean where a number, 3 or 4 numbers or a string is "
         "expected"},
        {"map", withMaterial(R"(, "properties": [{"name": "p", "map": 1}])"),
         "s.json: /materials/0/properties/0/map: map 1 does not exist (1 map); write null for none"},
        {"diffuse", withMaterial(R"(, "diffuse": 1)"),
         "s.json: /materials/0/diffuse: a number where a list is expected"},
        {"specular", withMaterial(R"(, "specular": "red")"),
         "s.json: /materials/0/specular: a string where a number or 3 numbers are expected"},
        {"texture map", withMaterial(R"(, "textureMaps": [{"slot": 1, "map": 3}])"),
         "s.json: /materials/0/textureMaps/0/map: map 3 does not exist (1 map)"},
        {"texture map null", withMaterial(R"(, "textureMaps": [{"slot": 1, "map": null}])"),
         "s.json: /materials/0/textureMaps/0/map: null where a number is expected"},
        {"map class", withMap("{}"), R"(s.json: /maps/0: the member "class" is missing)"},
        {"bitmap", withMap(R"({"class": "Bitmap", "bitmap": null})"),
         "s.json: /maps/0/bitmap: null where a string is expected"},
        {"sub-map", withMap(R"({"class": "Normal Bump", "subMaps": [null, 4]})"),
         "s.json: /maps/0/subMaps/1: map 4 does not exist (1 map); write null for none"},
    });
}

TEST(ReadSnapshot, KeepsMessagesShort) {
    const std::string name(1 << 20, 'x');
    EXPECT_EQ(errorOf(withNode(", \"" + name + "\": 1")),
              "s.json: /nodes/0: unknown member \"" + std::string(60, 'x') + "…\"");
    EXPECT_LT(errorOf(withNode(", \"material\": " + std::string(100000, '['))).size(), 200U);
    EXPECT_EQ(errorOf(withNode(R"(, "line\nend": 1)")), R"(s.json: /nodes/0: unknown member "line\nend")");
}

TEST(CheckSnapshot, ChecksWhatNoFileCanHold) {
    const auto errorOfScene = [](const SceneSnapshot& scene) {
        try {
            checkSnapshot(scene, "scene");
        } catch (const SceneError& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    SceneSnapshot scene;
    scene.nodes.resize(1);
    scene.roots = {0};
    EXPECT_EQ(errorOfScene(scene), "no error");
    SceneSnapshot column = scene;
    column.nodes[0].worldTransform[1][3] = 2;
    EXPECT_EQ(errorOfScene(column), "scene: /nodes/0/worldTransform: the fourth column is not (0, 0, 0, 1)");
    SceneSnapshot extras = scene;
    extras.nodes[0].userProperties[u"extras"] = 1;
    EXPECT_EQ(errorOfScene(extras),
              "scene: /nodes/0/userProperties: \"extras\" cannot be a key here: readers pass over it");
    SceneSnapshot channel = scene;
    channel.meshes.resize(1);
    channel.meshes[0].maps[-2] = {};
    EXPECT_EQ(errorOfScene(channel),
              "scene: /meshes/0/maps/-2: \"-2\" is not a channel number; write it like \"0\" or \"12\"");
    SceneSnapshot smoothing = scene;
    smoothing.meshes.resize(1);
    smoothing.meshes[0].smoothing = {1};
    EXPECT_EQ(errorOfScene(smoothing),
              "scene: /meshes/0/smoothing: 1 entries where 0 are expected, 1 a face");
}

}  // namespace
}  // namespace velinor
