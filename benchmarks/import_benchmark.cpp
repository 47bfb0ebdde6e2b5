// Importing a small scene file in a process of its own, beside the same import in this process.
#include <benchmark/benchmark.h>

#include <fstream>

#include "cli/isolated_import.h"
#include "platform/temporary_folder.h"

namespace velinor {
namespace {

// An OBJ file of one box, gone with the program.
class BoxFile {
  public:
    BoxFile() : path_(folder_.path() / "box.obj") {
        std::ofstream file(path_, std::ios::binary);
        file << "o Box\n";
        for (int i = 0; i < 8; ++i)
            file << "v " << (i & 1) << " " << (i >> 1 & 1) << " " << (i >> 2) << "\n";
        file << "f 1 3 4 2\nf 5 6 8 7\nf 1 2 6 5\nf 2 4 8 6\nf 4 3 7 8\nf 3 1 5 7\n";
    }

    const std::filesystem::path& path() const { return path_; }

  private:
    TemporaryFolder folder_;
    std::filesystem::path path_;
};

void BM_ImportHere(benchmark::State& state) {
    const BoxFile file;
    NoProgress progress;
    for (auto _ : state) {
        ImportNotes notes;
        benchmark::DoNotOptimize(readWithAssimp(file.path(), {}, progress, notes));
    }
}

void BM_ImportIsolated(benchmark::State& state) {
    const BoxFile file;
    NoProgress progress;
    for (auto _ : state) {
        ImportNotes notes;
        benchmark::DoNotOptimize(importIsolated(file.path(), {}, progress, notes));
    }
}

BENCHMARK(BM_ImportHere)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ImportIsolated)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace velinor
