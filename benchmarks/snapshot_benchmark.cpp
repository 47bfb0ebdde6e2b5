// Reading a CBOR snapshot with one large mesh, beside reading its bytes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "benchmarks/synthetic_scene.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

// A file that is gone with the program.
class SnapshotFile {
  public:
    explicit SnapshotFile(int triangleCount)
        : path_(std::filesystem::temp_directory_path() /
                ("tolvex_benchmark_" + std::to_string(triangleCount) + ".scene.cbor")) {
        const std::string bytes = writeSnapshot(syntheticMesh(triangleCount), SnapshotEncoding::cbor);
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    SnapshotFile(const SnapshotFile&) = delete;
    SnapshotFile& operator=(const SnapshotFile&) = delete;
    ~SnapshotFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    std::string bytes() const {
        std::string content(std::filesystem::file_size(path_), '\0');
        std::ifstream(path_, std::ios::binary)
            .read(content.data(), static_cast<std::streamsize>(content.size()));
        return content;
    }

  private:
    std::filesystem::path path_;
};

void BM_ReadFileBytes(benchmark::State& state) {
    const SnapshotFile file(static_cast<int>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state)
        size = file.bytes().size();
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

void BM_ReadCborSnapshot(benchmark::State& state) {
    const SnapshotFile file(static_cast<int>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string bytes = file.bytes();
        size = bytes.size();
        benchmark::DoNotOptimize(readSnapshot(bytes, SnapshotEncoding::cbor, "benchmark"));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

BENCHMARK(BM_ReadFileBytes)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadCborSnapshot)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velinor
