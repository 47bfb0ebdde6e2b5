// Collecting a scene and writing its three descriptors, beside a floor that only formats the same numbers.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <vector>

#include "base/number_format.h"
#include "base/progress.h"
#include "base/report.h"
#include "benchmarks/memory.h"
#include "benchmarks/synthetic_scene.h"
#include "descriptors/scene_descriptor.h"
#include "descriptors/webtable_descriptor.h"
#include "hosts/snapshot/snapshot_host.h"
#include "plugin/package_descriptor.h"
#include "scene/scene_collection.h"
#include "scene/transform.h"

namespace velinor {
namespace {

// Takes text and forgets it, as a file system's cache would.
class ForgettingSink final : public TextSink {
  public:
    void write(std::string_view text) override { bytes_ += text.size(); }
    std::size_t bytes() const { return bytes_; }

  private:
    std::size_t bytes_ = 0;
};

// Each size's scene is made once and kept.
const SceneSnapshot& sceneOf(int nodeCount) {
    static std::map<int, std::unique_ptr<SceneSnapshot>> scenes;
    auto& scene = scenes[nodeCount];
    if (!scene) scene = std::make_unique<SceneSnapshot>(syntheticScene(nodeCount));
    return *scene;
}

std::size_t collectAndDescribe(host::Host& host) {
    const ExportSettings settings;
    const NamePatterns patterns;
    CollectedScene scene;
    Report report;
    NoProgress progress;
    collectScene({*host.GetInstanceMgr(), settings, patterns, scene, report, progress},
                 *host.GetIGameInterface());
    ForgettingSink sink;
    writeSceneDescriptor(scene.rootRecord, settings, sink, report, progress);
    sink.write(BuildPackageDescriptor(settings, scene));
    sink.write(buildWebtablesJson(scene.webtableNodes, patterns.numericSuffixPattern, report));
    return sink.bytes();
}

void BM_CollectAndDescribe(benchmark::State& state) {
    const auto nodeCount = static_cast<int>(state.range(0));
    const auto host = makeSnapshotHost(sceneOf(nodeCount), {});
    host->GetIGameInterface()->InitialiseIGame(false);
    const bool canMeasure = resetPeakMemory();
    const std::uint64_t before = residentMemory();
    std::size_t bytes = 0;
    for (auto _ : state)
        bytes = collectAndDescribe(*host);
    if (canMeasure) {
        state.counters["peak_bytes_a_node"] =
            static_cast<double>(peakMemory() - before) / static_cast<double>(nodeCount);
    }
    state.counters["text_bytes_a_node"] = static_cast<double>(bytes) / static_cast<double>(nodeCount);
    state.SetItemsProcessed(state.iterations() * nodeCount);
}

// The numbers that index.jsx holds of the synthetic scene: each node's position, orientation and scale.
std::vector<float> numbersOf(const SceneSnapshot& scene) {
    std::vector<float> numbers;
    for (const SnapshotNode& node : scene.nodes) {
        const NodeTransform t = decompose(toPackageTransform(node.worldTransform, true));
        numbers.insert(numbers.end(), {t.position.x, t.position.y, t.position.z, t.orientation.w,
                                       t.orientation.x, t.orientation.y, t.orientation.z});
        const bool isLight = node.object->type == 1;
        if (!isLight) numbers.insert(numbers.end(), {t.scale.x, t.scale.y, t.scale.z});
        if (isLight) numbers.insert(numbers.end(), {1.0F, 1.0F, 1.0F});
    }
    return numbers;
}

void BM_FormatNumbersOnly(benchmark::State& state) {
    constexpr std::size_t kChunk = std::size_t{1} << 16U;
    const std::vector<float> numbers = numbersOf(sceneOf(static_cast<int>(state.range(0))));
    std::string text;
    for (auto _ : state) {
        for (const float number : numbers) {
            appendFixed6(text, double{number});
            if (text.size() >= kChunk) text.clear();
        }
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_CollectAndDescribe)->Apply(sizes);
BENCHMARK(BM_FormatNumbersOnly)->Apply(sizes);

}  // namespace
}  // namespace velinor
