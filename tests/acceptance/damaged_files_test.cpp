// Damaged versions of real files of each format through the command: each is read or refused, whatever
// becomes of the library that reads it. TOLVEX_MUTANTS in the environment says how many of each format; those
// that fail are copied into the folder TOLVEX_KEEP_MUTANTS where it names one. See docs/acceptance.md.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "base/text.h"
#include "tests/acceptance/mutants.h"
#include "tests/acceptance/scene_reading.h"
#include "tests/support/environment.h"
#include "tests/support/platform_text.h"
#include "tests/support/run_command.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// Starting a program takes much longer under Wine.
constexpr std::uint32_t kDefaultMutants = kIsWindows ? 5 : 25;
// So few seconds of processor time that a file which hangs costs the test little.
const std::vector<std::string> kLimits{"--import-time-limit", "2"};

struct Format {
    std::string name;
    std::string ending;              // of mutants
    std::vector<std::string> files;  // in the collection, or beside the tests where they begin with a dot
};

void PrintTo(const Format& format, std::ostream* out) {
    *out << format.name;
}

std::uint32_t mutantsWanted() {
    const char* value = std::getenv("TOLVEX_MUTANTS");
    return value == nullptr ? kDefaultMutants : static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10));
}

bool isProgress(const std::string& line) {
    return line.ends_with(" ...") || line.ends_with(" %");
}

// The lines of standard error that are no progress.
std::vector<std::string> toldLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!isProgress(line)) lines.push_back(line);
    }
    return lines;
}

class DamagedFiles : public testing::TestWithParam<Format> {
  protected:
    static std::string contentOf(const std::string& file) {
        if (!file.starts_with("./")) return bytesOf(modelFile(file));
        const fs::path scene = acceptanceFile(file.substr(2));
        if (GetParam().ending != ".scene.cbor") return bytesOf(scene);
        const TemporaryFolder folder;
        const fs::path cbor = folder.path() / "scene.scene.cbor";
        runTolvex({"snapshot", utf8Path(scene), utf8Path(cbor)});
        return bytesOf(cbor);
    }

    // What the command does with a damaged file; most are only read, since exporting takes long.
    CommandResult run(const fs::path& mutant, bool isExported) {
        std::vector<std::string> arguments{isExported ? "export" : "snapshot"};
        if (isExported) arguments.emplace_back("--quiet");
        arguments.insert(arguments.end(), kLimits.begin(), kLimits.end());
        arguments.push_back(utf8Path(mutant));
        arguments.push_back(utf8Path(results_.path() / (isExported ? "package.jsx" : "out.scene.cbor")));
        const Clock::time_point start = Clock::now();
        CommandResult result = runTolvex(arguments);
        longest_ = std::max(longest_, Clock::now() - start);
        return result;
    }

    // One message that names the file, and nothing written.
    void expectCleanRefusal(const CommandResult& result, const fs::path& mutant) const {
        const std::vector<std::string> told = toldLines(result.err);
        EXPECT_EQ(told.size(), 1U) << result.err;
        if (!told.empty()) {
            EXPECT_TRUE(told[0].starts_with("tolvex: " + utf8Path(mutant) + ": ")) << told[0];
        }
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(fs::is_empty(results_.path()));
    }

    void tryMutant(const std::string& bytes, std::uint32_t number) {
        const fs::path mutant = mutants_.path() / ("mutant" + GetParam().ending);
        std::ofstream(mutant, std::ios::binary) << mutantOf(bytes, number);
        const CommandResult result = run(mutant, number % 10 == 0);
        EXPECT_TRUE(result.status == 0 || result.status == 2) << result.status << "\n" << result.err;
        if (result.status == 2) expectCleanRefusal(result, mutant);
        EXPECT_TRUE(fs::is_empty(temporary_.path())) << "a temporary file is left";
        ++(result.status == 0 ? read_ : refused_);
        removeResults();
    }

    void removeResults() const {
        for (const auto& entry : fs::directory_iterator(results_.path()))
            fs::remove_all(entry);
    }

    // What is not read whole shows nothing when it is damaged.
    void expectReadWhole(const std::string& bytes) {
        const fs::path whole = mutants_.path() / ("whole" + GetParam().ending);
        std::ofstream(whole, std::ios::binary) << bytes;
        const CommandResult result = run(whole, false);
        EXPECT_EQ(result.status, 0) << result.err;
        removeResults();
    }

    void keep(std::uint32_t number) const {
        const char* folder = std::getenv("TOLVEX_KEEP_MUTANTS");
        if (folder == nullptr) return;
        const std::string ending = GetParam().ending;
        fs::copy_file(mutants_.path() / ("mutant" + ending),
                      fs::path(folder) / (GetParam().name + std::to_string(number) + ending),
                      fs::copy_options::overwrite_existing);
    }

    void printCounts() const {
        std::printf("%s: %u tried, %u read, %u refused; the slowest took %.1f s\n", GetParam().name.c_str(),
                    read_ + refused_, read_, refused_, std::chrono::duration<double>(longest_).count());
    }

  private:
    TemporaryFolder mutants_;
    TemporaryFolder results_;
    TemporaryFolder temporary_;
    TemporaryFilesIn variable_{temporary_.path()};
    unsigned read_ = 0;
    unsigned refused_ = 0;
    Clock::duration longest_{};
};

TEST_P(DamagedFiles, AreReadOrRefusedWithOneMessage) {
    std::vector<std::string> contents;
    for (const std::string& file : GetParam().files)
        contents.push_back(contentOf(file));
    for (std::size_t i = 0; i < contents.size(); ++i) {
        SCOPED_TRACE(GetParam().files[i]);
        ASSERT_FALSE(contents[i].empty());
        expectReadWhole(contents[i]);
    }
    for (std::uint32_t number = 0; number < mutantsWanted(); ++number) {
        const std::size_t file = number % contents.size();
        SCOPED_TRACE("mutant " + std::to_string(number) + " of " + GetParam().files[file]);
        const bool hadFailed = HasFailure();
        tryMutant(contents[file], number);
        if (HasFailure() && !hadFailed) keep(number);
    }
    printCounts();
}

INSTANTIATE_TEST_SUITE_P(
    Of, DamagedFiles,
    testing::Values(
        Format{"FbxBinary", ".fbx", {"FBX/phong_cube.fbx", "FBX/spider.fbx", "FBX/box.fbx"}},
        Format{"FbxText", ".fbx", {"FBX/maxPbrMaterial_metalRough.fbx", "FBX/maxPbrMaterial_specGloss.fbx"}},
        Format{"Gltf", ".gltf", {"glTF2/BoxTextured-glTF-Embedded/BoxTextured.gltf"}},
        Format{"Glb",
               ".glb",
               {"glTF2/BoxTextured-glTF-Binary/BoxTextured.glb",
                "glTF2/BoxBadNormals-glTF-Binary/BoxBadNormals.glb"}},
        Format{"Collada", ".dae", {"Collada/kwxport_test_vcolors.dae", "Collada/lights.dae"}},
        Format{"Obj", ".obj", {"OBJ/box.obj", "OBJ/cube_usemtl.obj", "OBJ/concave_polygon.obj"}},
        Format{"ThreeDs", ".3ds", {"3DS/RotatingCube.3DS", "3DS/cubes_with_alpha.3DS", "3DS/test1.3ds"}},
        Format{"Ase", ".ase", {"ASE/RotatingCube.ASE", "ASE/anim2.ASE", "ASE/ThreeCubesGreen_UTF16LE.ASE"}},
        Format{"X", ".x", {"X/test_cube_text.x", "X/test_cube_binary.x", "X/kwxport_test_cubewithvcolors.x"}},
        Format{"Ply", ".ply", {"PLY/cube.ply", "PLY/cube_binary.ply", "PLY/cube_uv.ply"}},
        Format{"Off", ".off", {"OFF/Cube.off"}},
        Format{"Ac", ".ac", {"AC/sample_subdiv.ac", "AC/closedLine.ac", "AC/SphereWithLight.ac"}},
        Format{"Stl", ".stl", {"STL/triangle.stl", "STL/3DSMaxExport.STL", "STL/Spider_binary.stl"}},
        Format{"Blend", ".blend", {"BLEND/BlenderDefault_248.blend", "BLEND/CubeHierarchy_248.blend"}},
        Format{"Lwo", ".lwo", {"LWO/LWO2/boxuv.lwo", "LWO/LWO2/hierarchy.lwo"}},
        Format{"SnapshotJson", ".scene.json", {"./../packages/standard-materials/scene.scene.json"}},
        Format{"SnapshotCbor", ".scene.cbor", {"./../packages/standard-materials/scene.scene.json"}}),
    [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace velinor
