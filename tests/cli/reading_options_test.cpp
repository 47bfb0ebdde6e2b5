// What the user says about the reading of scenes, and what can be read.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::HasSubstr;

class ReadingOptionsTest : public CommandTest {
  protected:
    static constexpr const char* kFurniture =
        R"({"format": "tolvex-scene", "version": 1, "roots": [0, 2], "nodes": [)"
        R"({"name": "Table", "children": [1], "object": {"type": "helper"}},)"
        R"({"name": "Vase", "object": {"type": "helper"}},)"
        R"({"name": "Lamp", "object": {"type": "helper"}}]})";
    // A triangle in the plane of x and y, 2 above it.
    static constexpr const char* kTriangle = "o Flat\nv 0 0 2\nv 1 0 2\nv 0 1 2\nf 1 2 3\n";

    // The nodes in the scene descriptor of the package.
    int nodesOf(const char* package) const {
        const std::string index = readTree(folder() / package).at("index.jsx");
        int count = 0;
        for (std::size_t at = index.find("<node"); at != std::string::npos; at = index.find("<node", at + 1))
            ++count;
        return count;
    }

    json snapshotOf(const std::vector<std::string>& arguments) const {
        std::vector<std::string> all{"snapshot"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        all.emplace_back("out.json");
        const CommandResult result = run(all);
        EXPECT_EQ(result.status, 0) << result.err;
        std::ifstream file(folder() / "out.json", std::ios::binary);
        return json::parse(file);
    }
};

TEST_F(ReadingOptionsTest, APatternThatIsNoneEndsWithStatus2) {
    const CommandResult result = run({"inspect", "room.scene.json", "--select", "[z-a]"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(
        lastLine(result.err),
        "tolvex: --select: \"[z-a]\" is no pattern: invalid character class range: z-a; write \\ before "
        "a character that is meant as it stands");
}

TEST_F(ReadingOptionsTest, OnlyWhatIsSelectedIsExported) {
    write("furniture.scene.json", kFurniture);
    const CommandResult result =
        run({"export", "furniture.scene.json", "out.jsx", "--select", "Tab*", "--selection-only"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(nodesOf("out"), 2) << "the table and the vase on it";
}

TEST_F(ReadingOptionsTest, ASelectionThatIsNotAskedForIsTold) {
    write("furniture.scene.json", kFurniture);
    const CommandResult result = run({"export", "furniture.scene.json", "out.jsx", "--select", "Vase"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("--select changes nothing of the package without --selection-only"));
    EXPECT_EQ(nodesOf("out"), 3);
}

TEST_F(ReadingOptionsTest, ANameThatNoNodeHasEndsWithStatus2) {
    write("furniture.scene.json", kFurniture);
    const CommandResult result =
        run({"export", "furniture.scene.json", "out.jsx", "--select", "Sofa", "--selection-only"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(lastLine(result.err),
              "tolvex: --select: no node of the scene is named \"Sofa\"; \"tolvex inspect\" shows the names");
    EXPECT_FALSE(fs::exists(folder() / "out"));
}

TEST_F(ReadingOptionsTest, TheSelectionOfSeveralFormatsIsSaved) {
    write("furniture.scene.json", kFurniture);
    write("flat.obj", kTriangle);
    EXPECT_TRUE(snapshotOf({"--select", "Lamp", "furniture.scene.json"}).at("nodes").at(2).at("selected"));
    EXPECT_TRUE(snapshotOf({"--select", "Fla?", "flat.obj"}).at("nodes").at(0).at("selected"));
}

TEST_F(ReadingOptionsTest, TheUpAxisTurnsFilesThatDoNotState) {
    write("flat.obj", kTriangle);
    const auto firstVertex = [this](const std::vector<std::string>& arguments) {
        const json numbers = snapshotOf(arguments).at("meshes").at(0).at("vertices");
        return std::vector<double>(numbers.begin(), numbers.begin() + 3);
    };
    using Point = std::vector<double>;
    EXPECT_EQ(firstVertex({"flat.obj"}), Point({0, -2, 0})) << "Y is up where nothing is said";
    EXPECT_EQ(firstVertex({"flat.obj", "--up-axis", "y"}), Point({0, -2, 0}));
    EXPECT_EQ(firstVertex({"flat.obj", "--up-axis", "z"}), Point({0, 0, 2}));
}

TEST_F(ReadingOptionsTest, TheUpAxisOfFilesThatStateItIsTold) {
    write("empty.ase", "*3DSMAX_ASCIIEXPORT 200\n*HELPEROBJECT {\n*NODE_NAME \"H\"\n}\n");
    for (const char* scene : {"room.scene.json", "empty.ase"}) {
        const CommandResult result = run({"inspect", scene, "--up-axis", "y"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.err,
                    HasSubstr("the up axis that was asked for has no effect: the format states its own"));
    }
}

#ifndef __SANITIZE_ADDRESS__  // no limit of address space there
// A mesh of 200,000 triangles does not fit into a process that may have little more than the program itself.
TEST_F(ReadingOptionsTest, TheMemoryLimitEndsAnImport) {
    std::ostringstream text;
    for (int i = 0; i < 200000; ++i)
        text << "v " << i << " 0 0\nv 0 " << i << " 1\nv 1 1 " << i << "\nf -1 -2 -3\n";
    write("big.obj", text.str());
    const CommandResult result = run({"inspect", "big.obj", "--import-memory-limit", "1"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(lastLine(result.err), HasSubstr("big.obj: "));
    EXPECT_THAT(lastLine(result.err), HasSubstr("memory"));
    EXPECT_EQ(run({"inspect", "big.obj", "--import-memory-limit", "65536"}).status, 0);
}
#endif

TEST_F(ReadingOptionsTest, EveryFormatIsListedWithWhatIsLost) {
    const CommandResult shown = run({"formats"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_TRUE(
        shown.out.starts_with(".scene.json, .scene.cbor, .json, .cbor: Scene snapshot\n"
                              ".ase, .ask: 3ds Max ASCII Scene Export\n"
                              "    lost     hidden nodes, layers, selection\n"
                              "             user properties\n"))
        << shown.out;
    EXPECT_THAT(shown.out,
                HasSubstr("\n.fbx: Autodesk FBX\n    refused  version 6.1 and earlier\n    lost "));
    EXPECT_THAT(shown.out, HasSubstr("\nNo package holds, of any file\n             animations\n"));
}

// The list and the reading come from one table: a file of every ending is read or refused for its content.
TEST_F(ReadingOptionsTest, EveryListedEndingIsRead) {
    const CommandResult listed = run({"formats", "--json"});
    ASSERT_EQ(listed.status, 0) << listed.err;
    const json document = json::parse(listed.out);
    std::set<std::string> endings;
    for (const json& format : document.at("formats")) {
        for (const json& ending : format.at("endings"))
            endings.insert(ending);
    }
    for (const char* ending : {"scene.json", "ase", "fbx", "glb", "dae", "obj", "3ds", "stl"})
        EXPECT_TRUE(endings.contains(ending)) << ending;
    for (const std::string& ending : endings) {
        write("s." + ending, "nothing of this format");
        const CommandResult result = run({"inspect", "s." + ending});
        EXPECT_THAT(result.err, testing::Not(HasSubstr("files of this ending cannot be read"))) << ending;
    }
    EXPECT_EQ(document.at("neverExported").at(0), "animations");
}

}  // namespace
}  // namespace velinor
