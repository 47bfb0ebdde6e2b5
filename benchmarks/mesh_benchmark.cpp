// Welding and writing meshes, beside a welder that compares bytes, the converter that writes the same format,
// and a mere copy of the file.
#include <benchmark/benchmark.h>
#include <meshoptimizer.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "base/progress.h"
#include "base/report.h"
#include "benchmarks/memory.h"
#include "benchmarks/synthetic_scene.h"
#include "geometry/mesh_geometry.h"
#include "geometry/ogre_mesh_text.h"
#include "geometry/ogre_mesh_writer.h"
#include "geometry/tool_commands.h"
#include "geometry/vertex_welder.h"
#include "hosts/snapshot/snapshot_host.h"
#include "platform/process_info.h"
#include "platform/temporary_folder.h"
#include "platform/text_file.h"
#include "platform/tool_runner.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr int kTriangles = 2'000'000;

// One corner of a face, as both welders take it.
struct Corner {
    host::Point3 position;
    host::Point3 normal;
    TexCoord texCoord;
};

// The corners of a square grid of so many triangles: a wave, or flat.
std::vector<Corner> gridCorners(bool isCurved, bool hasTexCoords) {
    const int side = static_cast<int>(std::sqrt(kTriangles / 2));
    const auto vertexAt = [&](int x, int y) {
        const auto fx = static_cast<float>(x);
        const auto fy = static_cast<float>(y);
        Corner corner{{fx, 0, fy}, {0, 1, 0}, {}};
        if (isCurved) {
            corner.position.y = 40 * std::sin(fx * 0.01F) * std::cos(fy * 0.013F);
            corner.normal = host::Normalize({-std::cos(fx * 0.01F), 1, std::sin(fy * 0.013F)});
        }
        if (hasTexCoords) corner.texCoord = {fx / static_cast<float>(side), fy / static_cast<float>(side)};
        return corner;
    };
    std::vector<Corner> corners;
    corners.reserve(std::size_t{3} * kTriangles);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const Corner a = vertexAt(x, y);
            const Corner b = vertexAt(x + 1, y);
            const Corner c = vertexAt(x, y + 1);
            const Corner d = vertexAt(x + 1, y + 1);
            corners.insert(corners.end(), {a, b, c, c, b, d});
        }
    }
    return corners;
}

void weld(benchmark::State& state, bool isCurved, bool hasTexCoords) {
    const std::vector<Corner> corners = gridCorners(isCurved, hasTexCoords);
    std::vector<std::uint32_t> indices(corners.size());
    for (auto _ : state) {
        VertexWelder welder(hasTexCoords ? 1 : 0, corners.size() / 6);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Corner& corner = corners[i];
            indices[i] = welder.weld({corner.position,
                                      corner.normal,
                                      {&corner.texCoord, hasTexCoords ? std::size_t{1} : std::size_t{0}}});
        }
        benchmark::DoNotOptimize(indices.data());
        state.counters["vertices"] = welder.vertexList().size();
    }
}

void BM_WeldCurved(benchmark::State& state) {
    weld(state, true, true);
}
void BM_WeldFlat(benchmark::State& state) {
    weld(state, false, true);
}
void BM_WeldCurvedWithoutTexCoords(benchmark::State& state) {
    weld(state, true, false);
}
void BM_WeldFlatWithoutTexCoords(benchmark::State& state) {
    weld(state, false, false);
}

void BM_RemapBytes(benchmark::State& state) {
    const std::vector<Corner> corners = gridCorners(true, true);
    std::vector<std::uint32_t> remap(corners.size());
    for (auto _ : state) {
        state.counters["vertices"] = static_cast<double>(meshopt_generateVertexRemap(
            remap.data(), nullptr, corners.size(), corners.data(), corners.size(), sizeof(Corner)));
        benchmark::DoNotOptimize(remap.data());
    }
}

// The files of one large mesh, made once.
class LargeMesh {
  public:
    LargeMesh() { write(); }

    void write() {
        const MeshWriterContext context{folder_.path(), settings_, *host_, materials_, report_, progress_};
        writeOgreMesh(context, *host_->GetIGameInterface()->GetTopLevelNode(0), "mesh");
    }

    void writeText() {
        if (!geometry_) {
            host::IGameNode& node = *host_->GetIGameInterface()->GetTopLevelNode(0);
            host::Mesh& mesh = node.GetMaxNode()->EvalWorldState(0)->ConvertToTriObject(0)->GetMesh();
            mesh.buildNormals();
            StepProgress progress(progress_, 1, mesh.faces().size());
            geometry_ = weldMesh(mesh, names_, progress);
        }
        TextFile file(folder_.path() / "text.mesh.xml");
        writeOgreMeshText(*geometry_, names_, 2, file);
        file.close();
    }

    fs::path xml() const { return folder_.path() / "mesh.mesh.xml"; }
    fs::path file(const char* name) const { return folder_.path() / name; }

    ToolRun run(const std::vector<std::string>& arguments) { return tools_.run({"", arguments}); }

    static std::string converter() {
        return meshConverterPath(executablePath().parent_path().parent_path() / "bin" / "Plugins").string();
    }

    // The binary mesh, which the converter can turn back.
    fs::path binary() {
        fs::path path = file("mesh.mesh");
        if (!fs::exists(path)) run({converter(), "-q", xml(), path});
        return path;
    }

  private:
    TemporaryFolder folder_;
    ExportSettings settings_;
    SceneSnapshot scene_ = syntheticMesh(kTriangles);
    std::unique_ptr<host::Host> host_ = makeSnapshotHost(scene_, {});
    MaterialMap materials_;
    MeshMaterials names_;
    std::optional<MeshGeometry> geometry_;
    Report report_;
    NoProgress progress_;
    SystemToolRunner tools_{folder_.path()};
};

LargeMesh& largeMesh() {
    static LargeMesh mesh;
    return mesh;
}

// What the writer does for one mesh, from the host's mesh to the file.
void BM_WriteOgreMesh(benchmark::State& state) {
    LargeMesh& mesh = largeMesh();
    const bool canMeasure = resetPeakMemory();
    const std::uint64_t before = residentMemory();
    for (auto _ : state)
        mesh.write();
    if (canMeasure)
        state.counters["peak_bytes_a_vertex"] =
            static_cast<double>(peakMemory() - before) / (kTriangles / 2.0);
    state.counters["file_MB"] = static_cast<double>(fs::file_size(mesh.xml())) / 1e6;
}

// Its last step alone: the text, from welded vertices to the file.
void BM_WriteOgreMeshText(benchmark::State& state) {
    LargeMesh& mesh = largeMesh();
    for (auto _ : state)
        mesh.writeText();
}

void BM_CopyFile(benchmark::State& state) {
    LargeMesh& mesh = largeMesh();
    for (auto _ : state) {
        if (!hasSucceeded(mesh.run({"/bin/cp", mesh.xml(), mesh.file("copy")})))
            state.SkipWithError("cp failed");
    }
}

void BM_ConverterWrites(benchmark::State& state) {
    LargeMesh& mesh = largeMesh();
    const fs::path binary = mesh.binary();
    for (auto _ : state) {
        if (!hasSucceeded(mesh.run({LargeMesh::converter(), "-q", binary, mesh.file("back.mesh.xml")})))
            state.SkipWithError("the converter failed");
    }
}

BENCHMARK(BM_RemapBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WeldCurved)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WeldFlat)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WeldCurvedWithoutTexCoords)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WeldFlatWithoutTexCoords)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteOgreMesh)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_WriteOgreMeshText)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CopyFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ConverterWrites)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
}  // namespace velinor
