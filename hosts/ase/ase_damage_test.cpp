// Files that are cut off or damaged: read or refused with a place, nothing else.
#include <gtest/gtest.h>

#include <random>

#include "hosts/ase/ase_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// Every member of the grammar that is read, and some that are not.
std::string everything() {
    const std::string map =
        aseBlock("MAP_BUMP", "*MAP_CLASS \"Normal Bump\"\n*MAP_SUBNO 8\n" +
                                 aseBlock("MAP_GENERIC",
                                          "*MAP_CLASS \"Bitmap\"\n*MAP_SUBNO 0\n*BITMAP \"n.png\"\n"
                                          "*UVW_ANGLE 0.0000\n"));
    const std::string sub = aseBlock("SUBMATERIAL 1",
                                     "*MATERIAL_NAME \"Red\"\n*MATERIAL_CLASS \"Standard\"\n"
                                     "*MATERIAL_DIFFUSE 1.0000\t0.0000\t0.0000\n" +
                                         map);
    const std::string channel =
        "*MESH_NUMTVERTEX 3\n*MESH_TVERTLIST {\n*MESH_TVERT 0\t0.0000\t0.0000\t0.0000\n*MESH_TVERT "
        "1\t1.0000\t0.0000\t0.5000\n"
        "*MESH_TVERT 2\t0.0000\t1.0000\t0.0000\n}\n*MESH_NUMTVFACES 1\n*MESH_TFACELIST {\n*MESH_TFACE "
        "0\t2\t0\t1\n}\n";
    const std::string normals = aseBlock("MESH_NORMALS",
                                         "*MESH_FACENORMAL 0\t0.0000\t0.0000\t1.0000\n"
                                         "*MESH_VERTEXNORMAL 0\t0.0000\t0.0000\t1.0000\n");
    const std::string mesh = aseTriangle(channel + aseBlock("MESH_MAPPINGCHANNEL 2", channel) + normals,
                                         "*MESH_SMOOTHING 1,2 \t*MESH_MTLID 1");
    return "*3DSMAX_ASCIIEXPORT\t200\r\n*COMMENT \"AsciiExport Version  2,00\"\r\n" +
           aseBlock("SCENE", "*SCENE_FIRSTFRAME 0\n*SCENE_TICKSPERFRAME 160\n") +
           aseBlock("MATERIAL_LIST",
                    "*MATERIAL_COUNT 1\n" + aseBlock("MATERIAL 0", "*MATERIAL_NAME \"M\"\n" + sub)) +
           "*GROUP \"G\" {\n" + aseHelper("G") +
           aseBlock("GEOMOBJECT", aseName("Mirror") + "*NODE_PARENT \"G\"\n" +
                                      aseTransform("Mirror", "1,5 2,5 3,5", "-1") + mesh +
                                      "*MATERIAL_REF 0\n") +
           "}\n" +
           aseBlock(
               "LIGHTOBJECT",
               aseName("L") + "*LIGHT_TYPE Target\n" + aseTransform("L") + aseTransform("L.Target") +
                   aseBlock("LIGHT_SETTINGS", "*LIGHT_COLOR 1 1 1\n*LIGHT_INTENS 1\n*LIGHT_FALLOFF 45\n"));
}

// Reads `bytes`: a sound scene, or a message with the file in one line. Whether it was a scene.
bool holdsFor(const std::string& bytes) {
    try {
        readAseText(bytes);
        return true;
    } catch (const SceneError& error) {
        const std::string message = error.what();
        EXPECT_TRUE(message.starts_with("room.ase: ")) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        EXPECT_LT(message.size(), 400U) << message;
        return false;
    }
}

TEST(AseDamage, EveryBeginningOfAFileIsReadOrRefused) {
    const std::string whole = everything();
    EXPECT_EQ(readAseText(whole).scene.nodes.size(), 3U);
    int scenes = 0;
    for (std::size_t size = 0; size < whole.size(); ++size)
        scenes += holdsFor(whole.substr(0, size)) ? 1 : 0;
    // Cut between objects a file looks whole: behind the group, and where only blanks or a keyword are left.
    EXPECT_GT(scenes, 0);
    EXPECT_LT(scenes, 30);
}

TEST(AseDamage, AnyByteMayBeAnother) {
    std::string text = everything();
    for (char& byte : text) {
        const char before = byte;
        for (const char other : {'\0', '{', '}', '"', '*', '9', '\xFF'}) {
            byte = other;
            holdsFor(text);
        }
        byte = before;
    }
}

// Changes that keep the shape of the text get further than changed bytes: words swapped for others, lines
// left out or doubled.
std::string damaged(const std::string& text, std::mt19937& random) {
    const auto below = [&random](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
    constexpr const char* kWords[] = {"-1", "4294967295", "65536", "1e39",    "1.#QNAN", "{",
                                      "}",  "\"",         "0",     "*MESH {", "7,5"};
    std::string changed = text;
    for (std::size_t n = 1 + below(4); n > 0; --n) {
        const std::size_t at = below(changed.size());
        const std::size_t begin = changed.find_last_of(" \t\n", at) + 1;
        const std::size_t end =
            std::min(changed.find_first_of(below(2) == 0 ? " \t\n" : "\n", at), changed.size());
        if (end <= begin) continue;
        switch (below(3)) {
            case 0:
                changed.replace(begin, end - begin, kWords[below(std::size(kWords))]);
                break;
            case 1:
                changed.erase(begin, end - begin);
                break;
            default:
                changed.insert(end, changed.substr(begin, end - begin + 1));
        }
    }
    return changed;
}

TEST(AseDamage, DamagedFilesAreReadOrRefused) {
    const std::string whole = everything();
    std::mt19937 random(1);
    int scenes = 0;
    int refused = 0;
    for (int i = 0; i < 5000; ++i)
        ++(holdsFor(damaged(whole, random)) ? scenes : refused);
    EXPECT_GT(scenes, 500);
    EXPECT_GT(refused, 500);
}

TEST(AseDamage, RealFilesThatAreCutOrDamagedAreReadOrRefused) {
    const fs::path models = fs::path(TOLVEX_TEST_MODELS) / "ASE";
    ASSERT_TRUE(fs::is_directory(models))
        << "install the package assimp-testmodels, or set TOLVEX_TEST_MODELS";
    std::mt19937 random(2);
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(models)) {
        if (!entry.is_regular_file() || !isAseFile(entry.path())) continue;
        SCOPED_TRACE(entry.path());
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        EXPECT_TRUE(holdsFor(bytes));
        const bool isLarge = bytes.size() > 100000;
        for (int percent = 1; percent < 100; percent += isLarge ? 24 : 5)
            holdsFor(bytes.substr(0, bytes.size() * static_cast<std::size_t>(percent) / 100));
        for (int i = 0; i < (isLarge ? 5 : 50); ++i)
            holdsFor(damaged(bytes, random));
        ++files;
    }
    EXPECT_EQ(files, 14);
}

}  // namespace
}  // namespace velinor
