// The check of packages, on a sound package and on damaged ones.
#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/temporary_folder.h"
#include "tests/ogre/check_test_support.h"
#include "tests/ogre/sample_package.h"
#include "tools/ogre/dds_test_support.h"
#include "tools/ogre/mesh_binary_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

TEST(OgreCheck, FindsNothingInASoundPackage) {
    const TemporaryFolder package;
    writeSamplePackage(package.path());
    const CommandResult result = checkPackage(package.path());
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "index.jsx: line 14: \"Big Box.mesh\" stands for the file Big_Box.mesh\n"
              "resources/Big_Box.mesh: the material \"default\" has no script: the mesh has no material in "
              "the scene\n");
}

TEST(OgreCheck, PrintsTheMeshesAsJson) {
    const TemporaryFolder package;
    writeSamplePackage(package.path());
    const CommandResult result = runCheck({"--json", package.path()});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json.at("faults").size(), 0U);
    EXPECT_EQ(json.at("notes").size(), 2U);
    EXPECT_EQ(json.at("meshes").at("Square.mesh"), nlohmann::json::parse(R"({"vertices": 4,
        "bounds": {"min": [-1.0, 0.0, -2.0], "max": [1.0, 0.0, 2.0]},
        "submeshes": [{"material": "Wood", "triangles": 1}, {"material": "Metal", "triangles": 1}]})"));
}

TEST(OgreCheck, RefusesWhatIsNoPackage) {
    const TemporaryFolder empty;
    EXPECT_EQ(checkPackage(empty.path()).status, 2);
    EXPECT_THAT(checkPackage(empty.path()).err, HasSubstr("this is no package, it has no index.jsx"));
    EXPECT_EQ(runCheck({}).status, 2);
    EXPECT_EQ(runCheck({"--jsn", empty.path()}).status, 2);
    EXPECT_EQ(runCheck({empty.path(), empty.path()}).status, 2);
}

struct Damage {
    std::string name;
    std::function<void(const fs::path& resources)> apply;
    std::string fault;  // part of what the check prints
};

void PrintTo(const Damage& damage, std::ostream* out) {
    *out << damage.name;
}

std::function<void(const fs::path&)> replacing(const std::string& file, const std::string& old,
                                               const std::string& replacement) {
    return [=](const fs::path& resources) { replaceInFile(resources / file, old, replacement); };
}

std::function<void(const fs::path&)> removing(const std::string& file) {
    return [=](const fs::path& resources) { fs::remove(resources / file); };
}

std::function<void(const fs::path&)> writing(const std::string& file, const std::string& content) {
    return [=](const fs::path& resources) { writeFile(resources / file, content); };
}

std::function<void(const fs::path&)> cutting(const std::string& file, std::size_t length) {
    return [=](const fs::path& resources) { fs::resize_file(resources / file, length); };
}

// Square.mesh after a change.
std::function<void(const fs::path&)> changingMesh(const std::function<void(TestMesh&)>& change) {
    TestMesh mesh;
    change(mesh);
    return writing("Square.mesh", mesh.bytes());
}

const float kInfinity = std::numeric_limits<float>::infinity();

const std::vector<Damage>& damages() {
    static const std::vector<Damage> all{
        {"ScriptWithUnknownParameter", replacing("Wood.material", "tile_count_normal", "tile_count_nrml"),
         "resources/Wood.material: line 17: invalid parameters: Parameter called tile_count_nrml does not "
         "exist"},
        {"ScriptWithUnknownProgram",
         replacing("Wood.material", "physicallybased_fp", "physicallybased_fragment"),
         "resources/Wood.material: line 21: reference to a non existing object: physicallybased_fragment"},
        {"ScriptWithUnknownWord", replacing("Wood.material", "cull_hardware", "kull_hardware"),
         "resources/Wood.material: line 9: "},
        {"ScriptWithOpenBrace", replacing("Wood.material", "\t\t}\n\t}\n}\n", "\t\t}\n\t}\n"),
         "resources/Wood.material: OGRE logs "},
        {"ScriptWithByteOrderMark", replacing("Wood.material", "material", "\xEF\xBB\xBFmaterial"),
         "resources/Wood.material: line 1: "},
        {"ScriptWithoutMaterial", writing("Wood.material", ""),
         "resources/Wood.material: the script has no material"},
        {"ScriptWithTheMaterialOfAnother", replacing("Wood.material", "material Wood", "material Metal"),
         "resources/Wood.material: the material \"Metal\" stands in Metal.material, too"},
        {"ScriptOfNamelessMaterial", replacing("Wood.material", "material Wood", "material"),
         "resources/Wood.material: "},
        {"TextureNameWithSpace", replacing("Wood.material", "texture wood.png", "texture old wood.png"),
         "resources/Wood.material: line 33: invalid parameters: wood.png"},
        {"TextureMissing", removing("wood.png"),
         "resources/Wood.material: the texture unit \"diffuse_map\" names \"wood.png\", which is not in the "
         "package"},
        {"TextureNotAnImage", writing("wood.png", "no image"),
         "resources/wood.png: the image does not decode"},
        {"TextureCutOff", cutting("wood.png", 50), "resources/wood.png: the image does not decode"},
        {"TextureEmpty", writing("grey.tga", ""), "resources/grey.tga: the image does not decode"},
        {"TextureOfUnknownKind",
         [](const fs::path& resources) {
             writeFile(resources / "wood.xyz", "?");
             replaceInFile(resources / "Wood.material", "wood.png", "wood.xyz");
         },
         "resources/wood.xyz: the image does not decode"},
        {"CubeMapCutOff", cutting("sky.dds", 1000),
         "resources/sky.dds: the file has 1000 bytes, its header promises 2168"},
        {"CubeMapOfFiveFaces", writing("sky.dds", ddsCubeMap(8, 0x7E00)),
         "resources/sky.dds: the file has 2168 bytes"},
        {"CubeMapThatIsFlat", replacing("Wood.material", "cubic_texture sky.dds", "cubic_texture wood.png"),
         "resources/wood.png: it is used as a cube map and has 1 faces, not 6"},
        {"MeshEmpty", writing("Square.mesh", ""), "resources/Square.mesh: the file is empty"},
        {"MeshCutOff", cutting("Square.mesh", 100), "resources/Square.mesh: the chunk 0x3000"},
        {"MeshOfText", writing("Square.mesh", "<?xml version=\"1.0\"?>"),
         "resources/Square.mesh: the file is no binary mesh"},
        {"MeshOfOldVersion", changingMesh([](TestMesh& mesh) { mesh.version = "[MeshSerializer_v1.41]"; }),
         "resources/Square.mesh: the version is \"[MeshSerializer_v1.41]\""},
        {"MeshIndexOutOfRange", changingMesh([](TestMesh& mesh) { mesh.submeshes[0].indices[0] = 9; }),
         "resources/Square.mesh: submesh 0 refers to vertex 9 of 4"},
        {"MeshBoundsWrong", changingMesh([](TestMesh& mesh) { mesh.bounds->at(0) = -3; }),
         "resources/Square.mesh: the bounds are stated as (-3.000000, "},
        {"MeshBoundsInfinite", changingMesh([](TestMesh& mesh) { mesh.bounds->at(5) = kInfinity; }),
         "resources/Square.mesh: the bounds are not finite"},
        {"MeshPositionInfinite", changingMesh([](TestMesh& mesh) { mesh.positions[2][1] = kInfinity; }),
         "resources/Square.mesh: a position is not finite"},
        {"MeshMaterialNameless", changingMesh([](TestMesh& mesh) { mesh.submeshes[1].material = ""; }),
         "resources/Square.mesh: submesh 1 has no material name"},
        {"MeshMaterialUnknown", changingMesh([](TestMesh& mesh) { mesh.submeshes[1].material = "Steel"; }),
         "resources/Square.mesh: the material \"Steel\" has no script in the package"},
        {"ScriptMissing", removing("Metal.material"),
         "resources/Square.mesh: the material \"Metal\" has no script in the package"},
        {"SceneWithMissingMesh", removing("Square.mesh"),
         "index.jsx: line 6: the mesh \"Square.mesh\" is not in the package"},
        {"SceneCutOff", cutting("../index.jsx", 100), "index.jsx: line "},
        {"EnvironmentNotJson", writing("../where.json", "{"), "where.json: "},
        {"EnvironmentWithoutSky", removing("FXUnlitSkyboxCubic.material"),
         "where.json: the sky's material \"FXUnlitSkyboxCubic\" has no script"},
    };
    return all;
}

class DamagedPackage : public testing::TestWithParam<Damage> {};

TEST_P(DamagedPackage, HasTheFault) {
    const TemporaryFolder package;
    writeSamplePackage(package.path());
    GetParam().apply(package.path() / "resources");
    const CommandResult result = checkPackage(package.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr(GetParam().fault)) << result.err;
}

INSTANTIATE_TEST_SUITE_P(Each, DamagedPackage, testing::ValuesIn(damages()),
                         [](const auto& parameter) { return parameter.param.name; });

TEST(OgreCheck, FindsSeveralFaultsAtOnce) {
    const TemporaryFolder package;
    writeSamplePackage(package.path());
    const fs::path resources = package.path() / "resources";
    fs::remove(resources / "grey.tga");
    writeFile(resources / "Square.mesh", "");
    replaceInFile(resources / "Wood.material", "float2", "flot2");
    const std::string out = checkPackage(package.path()).out;
    EXPECT_THAT(out, HasSubstr("resources/Wood.material: the texture unit \"light_map\" names \"grey.tga\""));
    EXPECT_THAT(out, HasSubstr("resources/Square.mesh: the file is empty"));
    EXPECT_THAT(out, HasSubstr("resources/Wood.material: line 14: "));
}

TEST(OgreCheck, TakesListedMaterialsForWhatTheyAre) {
    const TemporaryFolder package;
    writeSamplePackage(package.path());
    const fs::path resources = package.path() / "resources";
    fs::rename(resources / "Metal.material", resources / "Metal.material_properties");
    const CommandResult result = checkPackage(package.path());
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.err, HasSubstr("\"Metal\" has no script: it is of a class that is only listed"));
}

}  // namespace
}  // namespace velinor
