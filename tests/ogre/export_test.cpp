// Packages that the command writes, opened with OGRE and compared with their scenes: the golden cases, and
// scenes of many programs from the collection of the Debian package assimp-testmodels.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "platform/temporary_folder.h"
#include "tests/ogre/check_test_support.h"
#include "tests/ogre/scene_content.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::map<std::string, std::uint64_t> trianglesOf(const json& mesh) {
    std::map<std::string, std::uint64_t> triangles;
    for (const json& submesh : mesh.at("submeshes"))
        triangles[submesh.at("material")] += submesh.at("triangles").get<std::uint64_t>();
    return triangles;
}

// Positions are written with six decimals and read as 32-bit floats.
bool isNear(double actual, double expected) {
    return std::abs(actual - expected) <= 1e-6 + 1.2e-7 * std::abs(expected);
}

// How a mesh of a package differs from what the scene has; empty where it does not.
std::string differenceOf(const json& mesh, const MeshContent& expected) {
    if (trianglesOf(mesh) != expected.triangles) {
        return "triangles " + json(trianglesOf(mesh)).dump() + ", expected " +
               json(expected.triangles).dump();
    }
    const auto min = mesh.at("bounds").at("min").get<std::array<double, 3>>();
    const auto max = mesh.at("bounds").at("max").get<std::array<double, 3>>();
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!isNear(min[axis], expected.min[axis]) || !isNear(max[axis], expected.max[axis]))
            return "bounds " + mesh.at("bounds").dump() + ", expected " + json(expected.min).dump() +
                   json(expected.max).dump();
    }
    const auto vertices = mesh.at("vertices").get<std::uint64_t>();
    if (vertices < expected.fewestVertices || vertices > expected.mostVertices) {
        return std::to_string(vertices) + " vertices, expected " + std::to_string(expected.fewestVertices) +
               " to " + std::to_string(expected.mostVertices);
    }
    return "";
}

// The file is that of one of the nodes of its name.
void expectMesh(const std::string& file, const json& mesh, const SceneContent& scene) {
    const auto found = scene.find(file);
    ASSERT_NE(found, scene.end()) << file << " is the mesh of no node";
    std::string differences;
    for (const MeshContent& expected : found->second) {
        const std::string difference = differenceOf(mesh, expected);
        if (difference.empty()) return;
        differences += "\n  " + difference;
    }
    ADD_FAILURE() << file << ":" << differences;
}

std::vector<std::string> linesOf(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

class ExportedPackage {
  public:
    ExportedPackage(const fs::path& scene, const std::vector<std::string>& options) {
        const fs::path snapshot = folder_.path() / "scene.scene.json";
        const CommandResult saved = runTolvex({"snapshot", scene, snapshot});
        EXPECT_EQ(saved.status, 0) << saved.err;
        std::vector<std::string> arguments{"export", "--quiet", "--no-generate-physical-meshes"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {scene, folder_.path() / "package.jsx"});
        const CommandResult exported = runTolvex(arguments);
        EXPECT_EQ(exported.status, 0) << exported.err;
        if (saved.status != 0 || exported.status != 0) return;
        scene_ = readSceneContent(snapshot);
        const CommandResult checked = runCheck({"--json", folder_.path() / "package"});
        EXPECT_LE(checked.status, 1) << checked.err;
        if (checked.status <= 1) report_ = json::parse(checked.out);
    }

    const SceneContent& scene() const { return scene_; }
    json meshes() const { return report_.is_null() ? json::object() : report_.at("meshes"); }
    std::vector<std::string> faults() const {
        if (report_.is_null()) return {"there is no report"};
        std::vector<std::string> lines;
        for (const json& fault : report_.at("faults"))
            lines.push_back(fault.at("file").get<std::string>() + ": " + fault.at("text").get<std::string>());
        return lines;
    }

    void expectMeshesOfTheScene() const {
        const json all = meshes();
        for (const auto& [file, mesh] : all.items())
            expectMesh(file, mesh, scene_);
    }

  private:
    TemporaryFolder folder_;
    SceneContent scene_;
    json report_;
};

// The options of a golden case, one a line; "{case}" stands for its folder.
std::vector<std::string> optionsOf(const fs::path& folder) {
    constexpr std::string_view kCase = "{case}";
    std::vector<std::string> options = linesOf(folder / "arguments.txt");
    for (std::string& option : options) {
        const std::size_t at = option.find(kCase);
        if (at != std::string::npos) option.replace(at, kCase.size(), folder.string());
    }
    return options;
}

std::vector<std::string> goldenCases() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(TOLVEX_PACKAGE_CASES)) {
        if (entry.is_directory()) names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

std::string testName(std::string name) {
    std::ranges::replace_if(
        name, [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

class GoldenPackage : public testing::TestWithParam<std::string> {};

// The faults that cases have on purpose, or because the package format has them. An instance names its master
// by the low bytes of the master's name; beyond ASCII that is another name.
std::vector<std::string> expectedFaults(const std::string& name) {
    static const std::map<std::string, std::vector<std::string>> faults{
        {"active-ids-out-of-order", {"resources/Tri.mesh: submesh 0 has no material name"}},
        {"custom-maps",
         {"resources/Oak.material: the texture unit \"reflection_map\" names \"Default.dds\", which is not "
          "in the package",
          "resources/grey.png: it is used as a cube map and has 1 faces, not 6"}},
        {"meshes-that-fail",
         {"resources/Dot.mesh: the file is empty", "resources/No_faces.mesh: the file is empty",
          "index.jsx: line 6: the mesh \"Bookshelf.mesh\" is not in the package",
          "index.jsx: line 33: the mesh \"Chair.mesh\" is not in the package"}},
        {"names-beyond-ascii", {"index.jsx: line 25: the mesh \"!B>;.mesh\" is not in the package"}},
        {"standard-materials",
         {"resources/Lost.material: line 34: invalid parameters: one.tga",
          "resources/Lost.material: the texture unit \"diffuse_map\" names \"lost\", which is not in the "
          "package"}},
        {"texture-channels", {"index.jsx: line 24: the mesh \"Zero.mesh\" is not in the package"}},
    };
    const auto found = faults.find(name);
    return found == faults.end() ? std::vector<std::string>() : found->second;
}

// Cases whose submeshes are not those of the scene's materials: IDs are joined by the host's order of them.
bool hasSubmeshesOfItsOwn(const std::string& name) {
    return name == "active-ids-out-of-order";
}

TEST_P(GoldenPackage, IsSoundAndHoldsItsScene) {
    const fs::path folder = fs::path(TOLVEX_PACKAGE_CASES) / GetParam();
    const ExportedPackage package(folder / "scene.scene.json", optionsOf(folder));
    EXPECT_EQ(package.faults(), expectedFaults(GetParam()));
    if (!hasSubmeshesOfItsOwn(GetParam())) package.expectMeshesOfTheScene();
}

INSTANTIATE_TEST_SUITE_P(Case, GoldenPackage, testing::ValuesIn(goldenCases()),
                         [](const auto& parameter) { return testName(parameter.param); });

struct SceneFile {
    std::string file;                  // in the collection
    std::size_t meshes = 0;            // different names among the mesh nodes that are masters
    std::vector<std::string> missing;  // textures that the scene names and that are nowhere
};

void PrintTo(const SceneFile& scene, std::ostream* out) {
    *out << scene.file;
}

class RealScene : public testing::TestWithParam<SceneFile> {};

TEST_P(RealScene, GivesASoundPackageThatHoldsIt) {
    const ExportedPackage package(fs::path(TOLVEX_TEST_MODELS) / GetParam().file, {});
    std::vector<testing::Matcher<std::string>> faults;
    for (const std::string& texture : GetParam().missing)
        faults.push_back(testing::HasSubstr("\"" + texture + "\", which is not in the package"));
    EXPECT_THAT(package.faults(), testing::UnorderedElementsAreArray(faults));
    EXPECT_EQ(package.meshes().size(), GetParam().meshes);
    EXPECT_EQ(package.meshes().size(), package.scene().size());
    package.expectMeshesOfTheScene();
}

INSTANTIATE_TEST_SUITE_P(
    Scene, RealScene,
    testing::Values(SceneFile{"FBX/embedded_ascii/box.FBX", 1, {}},
                    SceneFile{"FBX/maxPbrMaterial_metalRough.fbx",
                              1,
                              {"albedo.png", "normal.png", "roughness.png", "metalness.png", "emission.png"}},
                    SceneFile{"FBX/cubes_with_mirroring_and_pivot.fbx", 3, {}},
                    SceneFile{"FBX/spider.fbx",
                              19,
                              {"engineflare1.jpg", "drkwood2.jpg", "SpiderTex.jpg", "wal67ar_small.jpg"}},
                    SceneFile{"glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb", 29, {}},
                    SceneFile{"glTF2/ClearCoat-glTF/ClearCoatTest.gltf", 27, {}},
                    SceneFile{"Collada/kwxport_test_vcolors.dae", 1, {}},
                    SceneFile{"Collada/teapot_instancenodes.DAE", 1, {}}, SceneFile{"3DS/test1.3ds", 9, {}},
                    SceneFile{"OBJ/spider.obj", 19, {}}, SceneFile{"ASE/anim2.ASE", 2, {}},
                    SceneFile{"ASE/MotionCaptureROM.ase", 26, {}}),
    [](const auto& parameter) { return testName(fs::path(parameter.param.file).filename()); });

}  // namespace
}  // namespace velinor
