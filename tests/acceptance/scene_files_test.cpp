// Scene files that other programs wrote, exported by the command: what it finds in them, where the package
// puts it, and that the package is whole. docs/acceptance.md says why these.
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/text.h"
#include "tests/acceptance/package_nodes.h"
#include "tests/acceptance/scene_reading.h"
#include "tests/support/platform_text.h"
#include "tests/support/run_command.h"
#include "tests/support/tree_compare.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using host::IGameObject;
using Names = std::vector<std::string>;

// How many there are of what.
struct Counts {
    std::size_t meshNodes = 0;
    std::size_t helpers = 0;
    std::size_t lights = 0;
    std::size_t cameras = 0;
    std::size_t meshes = 0;     // instances count once
    std::size_t triangles = 0;  // of the meshes
    std::size_t materials = 0;  // multi-materials and their parts

    bool operator==(const Counts&) const = default;
};

void PrintTo(const Counts& counts, std::ostream* out) {
    *out << counts.meshNodes << " mesh nodes, " << counts.helpers << " helpers, " << counts.lights
         << " lights, " << counts.cameras << " cameras, " << counts.meshes << " meshes, " << counts.triangles
         << " triangles, " << counts.materials << " materials";
}

// A node that must stand there, in host space; of several of that name the one with `place` others before it.
struct Place {
    std::u16string name;
    host::Point3 position;
    int place = 0;
};

struct SceneFile {
    std::string file;  // in the collection
    Counts counts;
    std::vector<Place> places;
    double tolerance = 1e-4;  // of the positions
    Names meshFiles = {};
    Names scripts = {};   // of materials
    Names textures = {};  // images of the scene, and those of one colour
    Names missing = {};   // images that the scene names and that are nowhere
    std::string assetFolder = {};
};

void PrintTo(const SceneFile& scene, std::ostream* out) {
    *out << scene.file;
}

const Names kSpiderMeshes{"Auge.mesh",    "Bein1Li.mesh", "Bein1Re.mesh", "Bein2Li.mesh",     "Bein2Re.mesh",
                          "Bein3Li.mesh", "Bein3Re.mesh", "Bein4Li.mesh", "Bein4Re.mesh",     "Brust.mesh",
                          "HLeib01.mesh", "Kopf.mesh",    "Kopf2.mesh",   "Duplicate05.mesh", "OK.mesh",
                          "Zahn.mesh",    "Zahn2.mesh",   "klZahn.mesh",  "klZahn2.mesh"};
const Names kSpiderScripts{"Augentex.material", "BeinTex.material", "HLeibTex.material", "Skin.material"};
const Names kSpiderTextures{"SpiderTex.jpg",    "drkwood2.jpg",     "engineflare1.jpg", "wal67ar_small.jpg",
                            "000000000255.png", "127127255255.png", "255255255255.png"};

// The names that the meshes of unnamed glTF nodes have.
Names meshesOfNodes(const std::vector<int>& nodes) {
    Names names;
    for (const int node : nodes)
        names.push_back("nodes_" + std::to_string(node) + "_.mesh");
    return names;
}

// Three rows of the clear coat sample each are named by their row.
Names clearCoatMeshes() {
    Names names{"X0_Label_BaseLayer.mesh",     "X1_Label_Coated.mesh",         "X2_Label_CoatingOnly.mesh",
                "Y0_Label_SimpleCoating.mesh", "Y1_Label_PartialCoating.mesh", "Y2_Label_Roughness.mesh",
                "Y3_Label_BaseNormals.mesh",   "Y4_Label_CoatNormals.mesh",    "Y5_Label_SharedNormals.mesh"};
    for (const char* row : {"", "R1_", "R2_", "R3_", "R4_", "R5_"}) {
        for (const char* sample : {"BaseLayerSample.mesh", "ClearCoatSample.mesh", "CoatOnlySample.mesh"})
            names.push_back(std::string(row) + sample);
    }
    return names;
}

Names clearCoatScripts() {
    Names names{"LabelMaterial.material"};
    for (const char* row : {"Simple", "Partial", "RoughVariations", "BaseNorm", "CoatNorm", "SharedNorm"}) {
        for (const char* layer : {"_Base", "_Coated", "_Coating"})
            names.push_back(std::string(row) + layer + ".material");
    }
    return names;
}

const std::vector<SceneFile>& sceneFiles() {
    static const std::vector<SceneFile> files{
        {.file = "FBX/embedded_ascii/box.FBX",
         .counts = {.meshNodes = 1, .meshes = 1, .triangles = 12, .materials = 1},
         .places = {{u"Box001", {0, 0, 0}}},
         .meshFiles = {"Box001.mesh"},
         .scripts = {"03_-_Default.material"},
         .textures = {"uv_test.png", "025025025255.png", "127127255255.png", "255255255255.png"}},
        {.file = "FBX/maxPbrMaterial_metalRough.fbx",
         .counts = {.meshNodes = 1, .meshes = 1, .triangles = 12, .materials = 1},
         .places = {{u"Box001", {0.57066F, 0.67127F, 0}}},
         .meshFiles = {"Box001.mesh"},
         .scripts = {"PBR_Material.material"},
         .textures = {"255255255255.png"},
         .missing = {"albedo.png", "normal.png", "roughness.png", "metalness.png", "emission.png"}},
        {.file = "FBX/cubes_with_mirroring_and_pivot.fbx",
         .counts = {.meshNodes = 4, .meshes = 4, .triangles = 420, .materials = 2},
         .places = {{u"Cube2", {-0.010402F, 0.010438F, 0.009983F}},
                    {u"Cube1", {0.093626F, -0.093907F, 0.109812F}},
                    {u"Cube3", {-0.010671F, -0.093902F, 0.009983F}},
                    {u"Cube1", {0.093353F, -0.211970F, -0.089846F}, 1}},
         .meshFiles = {"Cube1.mesh", "Cube2.mesh", "Cube3.mesh"},
         .scripts = {"Mat_Green.material", "Mat_Red.material"},
         .textures = {"000000000255.png", "000204000255.png", "127127255255.png", "204000000255.png",
                      "255255255255.png"}},
        {.file = "FBX/spider.fbx",
         .counts =
             {.meshNodes = 19, .lights = 1, .cameras = 1, .meshes = 19, .triangles = 1368, .materials = 4},
         .places = {{u"HLeib01", {0, 0, 0}},
                    {u"Lamp", {407.62F, 100.55F, 590.39F}},
                    {u"Camera", {748.11F, -650.76F, 534.37F}}},
         .tolerance = 0.0051,
         .meshFiles = kSpiderMeshes,
         .scripts = kSpiderScripts,
         .textures = kSpiderTextures,
         .assetFolder = "OBJ"},
        {.file = "glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb",
         // Triangles with a corner twice are not among them.
         .counts = {.meshNodes = 67,
                    .helpers = 14,
                    .cameras = 1,
                    .meshes = 29,
                    .triangles = 65317,
                    .materials = 38},
         .places = {{u"nodes[0]", {0, 0, 0}},
                    {u"nodes[73]", {-71.0181F, 20, -22.193F}},
                    {u"nodes[81]", {1005.9874F, -953.3456F, 766.3171F}}},
         .tolerance = 2e-3,
         .meshFiles = meshesOfNodes({80, 78, 74, 72, 71, 70, 67, 66, 65, 64, 62, 61, 60, 59, 58,
                                     57, 55, 53, 51, 50, 42, 41, 40, 12, 11, 9,  8,  6,  5}),
         .scripts = {"Material_16.material", "Material_17.material", "Material_18.material",
                     "Material_19.material", "Material_20.material", "Material_21.material",
                     "Material_22.material", "Material_23.material"},
         .textures = {"000000000255.png", "000000216255.png", "000108108255.png", "000143216255.png",
                      "127127255255.png", "216000000255.png", "216143000255.png", "216216216255.png",
                      "255255255255.png"}},
        {.file = "glTF2/ClearCoat-glTF/ClearCoatTest.gltf",
         .counts = {.meshNodes = 27, .helpers = 6, .meshes = 27, .triangles = 37116, .materials = 19},
         .places = {{u"BaseLayerSample", {-2.1F, 0, 5.25F}},
                    {u"R4_CoatNormals", {0, 0, -5.25F}},
                    {u"X0_Label_BaseLayer", {-2.08697F, 0, 6.61623F}}},
         .meshFiles = clearCoatMeshes(),
         .scripts = clearCoatScripts(),
         .textures = {"ClearCoatLabels.png", "PartialCoating_Alpha.png", "PlasticWrap_normals.jpg",
                      "RibsNormal.png", "RoughnessStripes-metalness.png", "RoughnessStripes-roughness.png",
                      "000000000255.png", "003005027255.png", "003005028255.png", "007007007255.png",
                      "112112112255.png", "127005002255.png", "127127255255.png", "153153153255.png",
                      "229229229255.png", "255255255255.png"}},
        {.file = "Collada/kwxport_test_vcolors.dae",
         .counts = {.meshNodes = 1, .meshes = 1, .triangles = 12, .materials = 4},
         .places = {{u"Box01", {0, 0, -19.685F}}},
         .meshFiles = {"Box01.mesh"},
         .scripts = {"bottom.material", "side.material", "top.material"},
         .textures = {"bottom.tga", "top.tga", "updown.tga", "024024024255.png", "027027027255.png",
                      "058058058255.png", "127127255255.png", "255255255255.png"}},
        {.file = "Collada/teapot_instancenodes.DAE",
         .counts = {.meshNodes = 2, .helpers = 1, .meshes = 1, .triangles = 1024, .materials = 1},
         .places = {{u"Teapot01", {-3.8013F, 2.5806F, 0}}, {u"Teapot01", {-124.6026F, 5.1613F, 0}, 1}},
         .meshFiles = {"Teapot01.mesh"},
         .scripts = {"ColorMaterial_1C1CB100.material"},
         .textures = {"025025025255.png", "028028177255.png", "127127255255.png", "255255255255.png"}},
        {.file = "3DS/test1.3ds",
         .counts = {.meshNodes = 9, .meshes = 9, .triangles = 108, .materials = 3},
         .places = {{u"Box02", {-0.070875F, 0.0018524F, -9.959F}},
                    {u"Box10", {-0.243822F, 10.230298F, 0.049057F}}},
         .meshFiles = {"Box01.mesh", "Box02.mesh", "Box04.mesh", "Box05.mesh", "Box06.mesh", "Box07.mesh",
                       "Box08.mesh", "Box09.mesh", "Box10.mesh"},
         .scripts = {"1_-_Default.material", "2_-_Default.material", "3_-_Default.material"},
         .textures = {"CWALL02.jpg", "IMAGE1.jpg", "IMAGE2.jpg", "000000000255.png", "127127255255.png",
                      "255255255255.png"}},
        {.file = "OBJ/spider.obj",
         // "Brusttex" is of no mesh, so the package has no script of it.
         .counts = {.meshNodes = 19, .meshes = 19, .triangles = 1368, .materials = 5},
         .places = {{u"HLeib01", {0, 0, 0}}, {u"Duplicate05", {0, 0, 0}}},
         .meshFiles = kSpiderMeshes,
         .scripts = kSpiderScripts,
         .textures = kSpiderTextures},
        {.file = "ASE/anim2.ASE",
         .counts = {.meshNodes = 2, .lights = 3, .cameras = 1, .meshes = 2, .triangles = 24},
         .places = {{u"Box02", {-45.457F, -12.7152F, 18.9634F}},
                    {u"Camera01", {-84.7152F, -0.4114F, 0}},
                    {u"FDirect01", {83.8439F, 1.3881F, 51.1261F}},
                    {u"Sky01", {-38.5409F, -85.6864F, 74.871F}}},
         .meshFiles = {"Box01.mesh", "Box02.mesh"}},
        {.file = "ASE/MotionCaptureROM.ase",
         .counts = {.meshNodes = 26, .helpers = 5, .meshes = 26, .triangles = 2016},
         .places = {{u"Bip01", {0.3222F, 19.4977F, 34.0762F}},
                    {u"Bip01 KopfNub", {0.0646F, 18.2797F, 68.7353F}},
                    {u"Bip01 R Zeh0", {-8.8237F, 16.8273F, 1.5739F}}},
         .meshFiles = {"Bip01.mesh",
                       "Bip01_Becken.mesh",
                       "Bip01_Hals.mesh",
                       "Bip01_Kopf.mesh",
                       "Bip01_L_Finger0.mesh",
                       "Bip01_L_Fu_.mesh",
                       "Bip01_L_Hand.mesh",
                       "Bip01_L_Oberarm.mesh",
                       "Bip01_L_Oberschenkel.mesh",
                       "Bip01_L_Schl_sselbein.mesh",
                       "Bip01_L_Unterarm.mesh",
                       "Bip01_L_Unterschenkel.mesh",
                       "Bip01_L_Zeh0.mesh",
                       "Bip01_R_Finger0.mesh",
                       "Bip01_R_Fu_.mesh",
                       "Bip01_R_Hand.mesh",
                       "Bip01_R_Oberarm.mesh",
                       "Bip01_R_Oberschenkel.mesh",
                       "Bip01_R_Schl_sselbein.mesh",
                       "Bip01_R_Unterarm.mesh",
                       "Bip01_R_Unterschenkel.mesh",
                       "Bip01_R_Zeh0.mesh",
                       "Bip01_Schritte.mesh",
                       "Bip01_Wirbels_ule.mesh",
                       "Bip01_Wirbels_ule1.mesh",
                       "Bip01_Wirbels_ule2.mesh"}},
    };
    return files;
}

// Every file of such a package, folders with slashes.
Names packageFiles(const SceneFile& scene) {
    Names names{"index.jsx", "where.json", "webtables.json", "resources/default.dds",
                "resources/FXUnlitSkyboxCubic.material"};
    for (const Names& resources : {scene.meshFiles, scene.scripts, scene.textures}) {
        for (const std::string& name : resources)
            names.push_back("resources/" + name);
    }
    for (const std::string& mesh : scene.meshFiles)
        names.push_back("resources/" + mesh + "_phy.obj");
    return names;
}

// Names of files as they can be compared: Windows has one for all cases.
Names comparable(Names names) {
    if (!kIsWindows) return names;
    for (std::string& name : names) {
        std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    }
    return names;
}

// The faults of a package as a check prints them, a line each. Notes are no faults, and the last line of
// "tolvex check" is their number.
Names faultsIn(const std::string& text, const fs::path& package) {
    Names lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with("note: ") && !line.starts_with(utf8Path(package))) lines.push_back(line);
    }
    return lines;
}

// One fault for each texture that is nowhere, and no other.
void expectNothingButMissing(const Names& faults, const Names& textures) {
    std::vector<testing::Matcher<std::string>> expected;
    for (const std::string& texture : textures)
        expected.push_back(testing::HasSubstr(texture));
    EXPECT_THAT(faults, testing::UnorderedElementsAreArray(expected));
}

// The point of the package that a point of the host is.
PackagePoint packagePoint(const host::Point3& p) {
    return {p.x, p.z, -p.y};
}

void expectNear(const PackagePoint& actual, const PackagePoint& expected, double tolerance) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
}

// The nodes of the scene that have an element in the package, parents first.
std::vector<const SnapshotNode*> placedNodes(const SceneSnapshot& scene) {
    std::vector<const SnapshotNode*> placed;
    std::vector<SnapshotRef> open(scene.roots.rbegin(), scene.roots.rend());
    while (!open.empty()) {
        const SnapshotNode& node = scene.nodes[open.back()];
        open.pop_back();
        if (node.object->type != IGameObject::IGAME_CAMERA) placed.push_back(&node);
        open.insert(open.end(), node.children.rbegin(), node.children.rend());
    }
    return placed;
}

// The node of the package turns and scales the axes of its object as the scene does.
void expectAxes(const PackagePlacement& actual, const host::GMatrix& expected) {
    const auto row = [&](int axis) {
        return packagePoint({expected[axis][0], expected[axis][1], expected[axis][2]});
    };
    const PackagePoint z = row(1);
    const std::array<PackagePoint, 3> axes{row(0), row(2), {-z[0], -z[1], -z[2]}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double length = 0;
        for (const double entry : axes[axis])
            length += std::abs(entry);
        SCOPED_TRACE("axis " + std::to_string(axis));
        expectNear(actual.axes[axis], axes[axis], 1e-3 * length);
    }
}

class RealScene : public testing::TestWithParam<SceneFile> {
  protected:
    RealScene() : reading_(modelFile(GetParam().file), options()) {}

    static Names options() {
        if (GetParam().assetFolder.empty()) return {};
        return {"--asset-folder", utf8Path(modelFile(GetParam().assetFolder))};
    }

    void exportScene() const {
        Names arguments{"export", "--quiet"};
        for (const std::string& option : options())
            arguments.push_back(option);
        arguments.push_back(utf8Path(modelFile(GetParam().file)));
        arguments.push_back(utf8Path(folder_.path() / "package.jsx"));
        const CommandResult result = runTolvex(arguments);
        ASSERT_EQ(result.status, 0) << result.err;
    }

    fs::path package() const { return folder_.path() / "package"; }

    Counts counts() const {
        return {.meshNodes = reading_.countOfType(IGameObject::IGAME_MESH),
                .helpers = reading_.countOfType(IGameObject::IGAME_HELPER),
                .lights = reading_.countOfType(IGameObject::IGAME_LIGHT),
                .cameras = reading_.countOfType(IGameObject::IGAME_CAMERA),
                .meshes = reading_.scene.meshes.size(),
                .triangles = reading_.triangles(),
                .materials = reading_.scene.materials.size()};
    }

    void expectPlacesInScene() const {
        for (const Place& place : GetParam().places) {
            SCOPED_TRACE(toUtf8(place.name));
            expectNear(packagePoint(reading_.node(place.name, place.place).worldTransform.Translation()),
                       packagePoint(place.position), GetParam().tolerance);
        }
    }

    // Each node of the package stands where its node of the scene does. Six decimals a level, and rows that
    // are not quite at right angles, which a turn and a scale cannot be, leave a little.
    void expectScenePlacedInPackage() const {
        std::vector<PackageNode> nodes = readPackageNodes(package() / "index.jsx");
        std::erase_if(nodes, [](const PackageNode& node) { return node.isHelperLight; });
        const auto placed = placedNodes(reading_.scene);
        ASSERT_EQ(nodes.size(), placed.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            SCOPED_TRACE("node " + toUtf8(placed[i]->name));
            const host::Point3 position = placed[i]->worldTransform.Translation();
            const double size = std::abs(position.x) + std::abs(position.y) + std::abs(position.z);
            expectNear(nodes[i].world.position, packagePoint(position), 5e-5 * size + 1e-4);
            const std::int32_t type = placed[i]->object->type;
            EXPECT_EQ(nodes[i].mesh.empty(), type != IGameObject::IGAME_MESH);
            EXPECT_EQ(nodes[i].light.empty(), type != IGameObject::IGAME_LIGHT);
            // A light's orientation aims it, see docs/coordinates.md.
            if (type != IGameObject::IGAME_LIGHT) expectAxes(nodes[i].world, placed[i]->worldTransform);
        }
    }

    // The start camera is the first camera of the scene.
    void expectStartCamera() const {
        const auto where = nlohmann::json::parse(bytesOf(package() / "where.json"));
        const auto position = where.at("camera").at("position");
        for (const SnapshotNode& node : reading_.scene.nodes) {
            if (node.object->type != IGameObject::IGAME_CAMERA) continue;
            return expectNear({position.at("x"), position.at("y"), position.at("z")},
                              packagePoint(node.worldTransform.Translation()), 1e-3);
        }
    }

    void expectFiles() const {
        Names names;
        for (const auto& [name, content] : readTree(package())) {
            names.push_back(withSlashes(name));
            const bool mayBeEmpty = name == "webtables.json";
            EXPECT_TRUE(mayBeEmpty || !content.empty()) << name;
        }
        EXPECT_THAT(comparable(names),
                    testing::UnorderedElementsAreArray(comparable(packageFiles(GetParam()))));
    }

    void expectChecksFindNothingElse() const {
        const Names& missing = GetParam().missing;
        const CommandResult check = runTolvex({"check", utf8Path(package())});
        EXPECT_EQ(check.status, missing.empty() ? 0 : 1) << check.err;
        expectNothingButMissing(faultsIn(check.out, package()), missing);
        const std::string program = TOLVEX_OGRE_CHECK;
        if (program.empty()) return;  // built without OGRE
        const CommandResult ogre = runProgram(program, {utf8Path(package())});
        EXPECT_EQ(ogre.status, missing.empty() ? 0 : 1) << ogre.err;
        expectNothingButMissing(faultsIn(ogre.out, package()), missing);
    }

  private:
    TemporaryFolder folder_;
    SceneReading reading_;
};

TEST_P(RealScene, IsReadAndGivesASoundPackageOfIt) {
    EXPECT_EQ(counts(), GetParam().counts);
    expectPlacesInScene();
    exportScene();
    if (HasFatalFailure()) return;
    expectFiles();
    expectScenePlacedInPackage();
    expectStartCamera();
    expectChecksFindNothingElse();
}

std::string testName(std::string name) {
    std::ranges::replace_if(
        name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(File, RealScene, testing::ValuesIn(sceneFiles()), [](const auto& parameter) {
    return testName(utf8Path(fs::path(parameter.param.file).filename()));
});

}  // namespace
}  // namespace velinor
