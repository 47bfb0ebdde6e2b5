// ASE files through the command, as an artist would export them.
#include <gmock/gmock.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class AseFile : public CommandTest {
  protected:
    static bool isAse(const fs::path& file) {
        return file.extension() == ".ase" || file.extension() == ".ASE";
    }

    // A triangle with a material "M" whose bitmap has that name.
    void writeTriangle(const std::string& bitmap) const {
        write("a.ase",
              "*3DSMAX_ASCIIEXPORT 200\n*MATERIAL_LIST {\n*MATERIAL 0 {\n*MATERIAL_NAME \"M\"\n"
              "*MATERIAL_CLASS \"Standard\"\n*MAP_DIFFUSE {\n*MAP_CLASS \"Bitmap\"\n*BITMAP \"" +
                  bitmap +
                  "\"\n}\n}\n}\n*GEOMOBJECT {\n*NODE_NAME \"T\"\n*NODE_TM {\n*TM_ROW0 1 0 0\n}\n*MESH {\n"
                  "*MESH_NUMVERTEX 3\n*MESH_NUMFACES 1\n*MESH_VERTEX_LIST {\n*MESH_VERTEX 0 0 0 0\n"
                  "*MESH_VERTEX 1 1 0 0\n*MESH_VERTEX 2 0 1 0\n}\n*MESH_FACE_LIST {\n"
                  "*MESH_FACE 0: A: 0 B: 1 C: 2 *MESH_SMOOTHING 1 *MESH_MTLID 0\n}\n}\n*MATERIAL_REF 0\n}\n");
    }
};

// Real files, each exported by itself and from its snapshot.
TEST_F(AseFile, EveryRealOneGivesThePackageOfItsSnapshot) {
    const fs::path models = fs::path(TOLVEX_TEST_MODELS) / "ASE";
    ASSERT_TRUE(fs::is_directory(models))
        << "install the package assimp-testmodels, or set TOLVEX_TEST_MODELS";
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(models)) {
        // Most of the time goes into the tools that a mesh needs, and one file has 26.
        if (!isAse(entry.path()) || entry.file_size() > 1000000) continue;
        SCOPED_TRACE(entry.path());
        const std::string name = "p" + std::to_string(files++);
        const CommandResult made = run({"export", utf8Path(entry.path()), name + ".jsx"});
        EXPECT_EQ(made.status, 0) << made.err;
        EXPECT_EQ(run({"snapshot", utf8Path(entry.path()), name + ".scene.cbor"}).status, 0);
        EXPECT_EQ(run({"export", name + ".scene.cbor", name + "s.jsx"}).status, 0);
        Tree direct = readTree(folder() / name);
        Tree ofSnapshot = readTree(folder() / (name + "s"));
        EXPECT_TRUE(direct.contains("index.jsx"));
        // It holds the name of the package.
        direct.erase("where.json");
        ofSnapshot.erase("where.json");
        EXPECT_EQ(direct, ofSnapshot);
    }
    EXPECT_EQ(files, 13);
}

TEST_F(AseFile, TheLargestIsInspectedAsItStands) {
    const fs::path file = fs::path(TOLVEX_TEST_MODELS) / "ASE/MotionCaptureROM.ase";
    const CommandResult result = run({"inspect", "--json", utf8Path(file)});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto document = nlohmann::json::parse(result.out);
    EXPECT_EQ(document.at("nodes").size(), 31U);
}

TEST_F(AseFile, ABitmapWhoseNameIsNotAsciiIsExported) {
    write(
        "gr\xC3\xB6\xC3\x9F"
        "e.png",
        "image");
    writeTriangle(
        "D:\\maps\\gr\xC3\xB6\xC3\x9F"
        "e.png");
    const CommandResult result = run({"export", "a.ase", "out.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    const Tree files = readTree(folder() / "out");
    ASSERT_TRUE(files.contains("resources/gr__e.png"));
    EXPECT_EQ(files.at("resources/gr__e.png"), "image");
    EXPECT_TRUE(files.contains("resources/T.mesh"));
}

// What ASE files never hold, and how names are read, is no loss of this file.
TEST_F(AseFile, AGoodOneIsExportedWithStrict) {
    write("good.ase",
          "*3DSMAX_ASCIIEXPORT 200\n*HELPEROBJECT {\n*NODE_NAME \"T\xFCr\"\n*NODE_TM {\n*NODE_NAME "
          "\"T\xFCr\"\n*TM_ROW0 1 0 0\n*TM_ROW1 0 1 0\n*TM_ROW2 0 0 1\n*TM_ROW3 0 0 0\n}\n}\n");
    const CommandResult good = run({"export", "--strict", "good.ase", "good.jsx"});
    EXPECT_EQ(good.status, 0) << good.err << good.out;
    write("bad.ase", "*3DSMAX_ASCIIEXPORT 200\n*HELPEROBJECT {\n*NODE_NAME \"A\"\n}\n");
    EXPECT_EQ(run({"export", "--strict", "bad.ase", "bad.jsx"}).status, 1) << "it has no transform";
}

TEST_F(AseFile, AMissingBitmapIsTold) {
    writeTriangle("D:\\maps\\wood.png");
    const CommandResult result = run({"export", "a.ase", "out.jsx"});
    EXPECT_THAT(result.out, HasSubstr("wood.png\" is missing: it was looked for at this path"));
}

TEST_F(AseFile, ADamagedOneEndsWithStatus2AndItsPlace) {
    write("a.ase", "*3DSMAX_ASCIIEXPORT 200\n*GEOMOBJECT {\n\t*MATERIAL_REF x\n}\n");
    const CommandResult result = run({"export", "a.ase", "out.jsx"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(lastLine(result.err),
              "tolvex: a.ase: line 3, column 16: there is \"x\" where a whole number is expected");
    EXPECT_FALSE(fs::exists(folder() / "out"));
    write("empty.ase", "");
    EXPECT_EQ(run({"inspect", "empty.ase"}).status, 2);
}

}  // namespace
}  // namespace velinor
