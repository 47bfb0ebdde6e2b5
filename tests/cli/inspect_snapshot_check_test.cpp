#include <nlohmann/json.hpp>

#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

using InspectTest = CommandTest;
using SnapshotTest = CommandTest;

TEST_F(InspectTest, PrintsTheTreeTheListsAndTheTotals) {
    write("s.scene.json",
          R"({"format": "tolvex-scene", "version": 1, "roots": [0, 2], "nodes": [)"
          R"({"name": "Table [color: red]", "children": [1], "material": 0, "instances": [1, 0],)"
          R"( "object": {"type": "mesh", "mesh": 0}},)"
          R"({"name": "Copy", "instances": [1, 0], "selected": true,)"
          R"( "object": {"type": "mesh", "mesh": 0}},)"
          R"({"name": "Webtable_1", "hidden": true, "layerHidden": true,)"
          R"( "object": {"type": "mesh", "mesh": 0}}],)"
          R"("meshes": [{"vertices": [], "faces": []}],)"
          R"("materials": [{"class": "Standard", "name": "Oak"}]})");
    const CommandResult result = run({"inspect", "s.scene.json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.out,
        "Table [color: red]: mesh, named \"Table\", color = red, master of 2 instances, material \"Oak\"\n"
        "  Copy: mesh, instance of \"Table [color: red]\", selected\n"
        "Webtable_1: web panel, hidden, layer hidden\n"
        "3 nodes: 2 mesh, 1 web panel\n"
        "\n"
        "An export with default settings takes\n"
        "Meshes (1)\n"
        "  Table\n"
        "Lights (0)\n"
        "Cameras (0)\n"
        "Camera bounds (0)\n"
        "Web panels (0)\n");
}

TEST_F(InspectTest, JsonHoldsTheSame) {
    const auto document = nlohmann::json::parse(run({"inspect", "--json", "room.scene.json"}).out);
    EXPECT_EQ(document["nodes"].size(), 2U);
    EXPECT_EQ(document["nodes"][1]["name"], "Unseen");
    EXPECT_EQ(document["nodes"][1]["hidden"], true);
    EXPECT_EQ(document["totals"]["helper"], 2);
    EXPECT_EQ(document["hostError"], nullptr);
}

TEST_F(InspectTest, DeepScenesGrowDownwardsOnly) {
    constexpr int kDepth = 2000;
    std::string text = R"({"format": "tolvex-scene", "version": 1, "roots": [0], "nodes": [)";
    for (int i = 0; i < kDepth; ++i) {
        text += (i > 0 ? "," : "") + std::string(R"({"name": "N")") +
                (i + 1 < kDepth ? R"(, "children": [)" + std::to_string(i + 1) + "]}" : "}");
    }
    write("deep.scene.json", text + "]}");
    const CommandResult result = run({"inspect", "deep.scene.json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("(depth 1999) N: no object\n"), std::string::npos);
    EXPECT_LT(result.out.size(), kDepth * 100U);
}

TEST_F(InspectTest, TellsWhereAnExportWouldEnd) {
    write("s.scene.json", R"({"format": "tolvex-scene", "version": 1, "roots": [0], "nodes": [)"
                          R"({"name": "A", "instances": [], "object": {"type": "helper"}}]})");
    const CommandResult result = run({"inspect", "s.scene.json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("A: helper, with an empty list of instances"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("ends there with a host error"), std::string::npos) << result.out;
}

TEST_F(SnapshotTest, ConvertsBackAndForth) {
    ASSERT_EQ(run({"snapshot", "room.scene.json", "a.scene.json"}).status, 0);
    ASSERT_EQ(run({"snapshot", "a.scene.json", "b.scene.cbor"}).status, 0);
    ASSERT_EQ(run({"snapshot", "b.scene.cbor", "c.scene.json"}).status, 0);
    const Tree files = readTree(folder());
    EXPECT_EQ(files.at("a.scene.json"), files.at("c.scene.json"));
    EXPECT_EQ(files.size(), 4U) << "no temporary file is left";
}

TEST_F(SnapshotTest, AFolderThatIsNotThereEndsWithStatus3) {
    EXPECT_EQ(run({"snapshot", "room.scene.json", "none/out.scene.json"}).status, 3);
}

class CheckTest : public CommandTest {
  protected:
    CheckTest() { EXPECT_EQ(run({"export", "--quiet", "room.scene.json", "room.jsx"}).status, 0); }
};

TEST_F(CheckTest, FindsNothingInAnExportedPackage) {
    const CommandResult result = run({"check", "room"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "room: no faults\n");
}

TEST_F(CheckTest, FindsWhatIsMissingOrMalformed) {
    write("room/index.jsx", "<root>\n</rot>\n\n");
    write("room/where.json", "{");
    fs::remove(folder() / "room/webtables.json");
    const CommandResult result = run({"check", "room"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("index.jsx: line 2: \"rot\" ends where \"root\" is open\n"), std::string::npos);
    EXPECT_NE(result.out.find("where.json: is no JSON: "), std::string::npos);
    EXPECT_NE(result.out.find("webtables.json: does not exist"), std::string::npos);
    EXPECT_NE(result.out.find("room: 3 faults\n"), std::string::npos) << result.out;
}

TEST_F(CheckTest, FindsMeshFilesThatAreNotThere) {
    write("tri.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    ASSERT_EQ(run({"export", "--quiet", "tri.obj", "tri.jsx"}).status, 0);
    const std::string text = readTree(folder() / "tri").at("index.jsx");
    const std::size_t start = text.find("url: '") + 6;
    const std::string mesh = text.substr(start, text.find('\'', start) - start);
    fs::remove(folder() / "tri/resources" / mesh);
    const CommandResult result = run({"check", "tri"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("the file resources/" + mesh + " does not exist"), std::string::npos)
        << result.out;
}

TEST_F(CheckTest, ReadsTheFilesOfMeshesAndMaterials) {
    const std::string index =
        "<root>\n\t<node\n"
        "\t\torientation={{ w: 1.0, x: 0.0, y: 0.0, z: 0.0 }}\n"
        "\t\tposition={{ x: 0.0, y: 0.0, z: 0.0 }}>\n"
        "\t\t<mesh\n\t\t\t{...{ url: 'Big Box.mesh' }}\n"
        "\t\t\tphysical={{ raycast: true, shapes: [ { shape: \"mesh\", mass: 1, mesh: \"Box.mesh_phy.obj\" } "
        "] }}>\n"
        "\t\t</mesh>\n\t</node>\n</root>\n\n";
    write("room/index.jsx", index);
    fs::copy_file(TOLVEX_SOURCE_DIR "/tests/corpus/ogre_mesh/box.mesh",
                  folder() / "room/resources/Big_Box.mesh");
    write("room/resources/Box.mesh_phy.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    write("room/resources/Letter.material", "material Letter\n{\n}\n");
    write("room/resources/FXUnlitSkyboxCubic.material", "material FXUnlitSkyboxCubic\n{\n}\n");
    const std::string note = "note: index.jsx: line 5: \"Big Box.mesh\" is the file resources/Big_Box.mesh\n";
    CommandResult result = run({"check", "room"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, note + "room: no faults, 1 note\n");

    write("room/resources/Letter.material", "material Letter\n{\n\ttexture none.png\n}\n");
    result = run({"check", "room"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
              "resources/Letter.material: line 3: the texture resources/none.png does not exist\n" + note +
                  "room: 1 fault, 1 note\n");
}

}  // namespace
}  // namespace velinor
