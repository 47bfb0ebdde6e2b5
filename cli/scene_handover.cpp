#include "cli/scene_handover.h"

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cli/sized_text.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

using References = std::vector<SnapshotRef>;

// A list of instances and the nodes that have it.
struct Sharing {
    InstanceList list;
    References nodes;
};

std::vector<Sharing> takeInstances(SceneSnapshot& scene) {
    std::vector<Sharing> sharings;
    std::unordered_map<const References*, std::size_t> known;
    for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
        std::optional<InstanceList>& instances = scene.nodes[node].instances;
        if (!instances) continue;
        const auto [place, isNew] = known.emplace(&instances->nodes(), sharings.size());
        if (isNew) sharings.push_back({*instances, {}});
        sharings[place->second].nodes.push_back(static_cast<SnapshotRef>(node));
        instances.reset();
    }
    return sharings;
}

void appendReferences(std::string& bytes, const References& references) {
    appendNumber(bytes, references.size());
    for (const SnapshotRef reference : references)
        appendNumber(bytes, reference);
}

References takeReferences(std::string_view& bytes, std::size_t nodeCount, std::string_view name) {
    References references;
    for (std::uint64_t left = takeNumber(bytes); left > 0; --left) {
        const std::uint64_t reference = bytes.empty() ? nodeCount : takeNumber(bytes);
        if (reference >= nodeCount)
            throw SceneError(std::string(name) + ": the importer named a node that is not there");
        references.push_back(static_cast<SnapshotRef>(reference));
    }
    return references;
}

}  // namespace

std::string packedScene(SceneSnapshot scene) {
    std::string groups;
    for (const Sharing& sharing : takeInstances(scene)) {
        appendReferences(groups, sharing.list.nodes());
        appendReferences(groups, sharing.nodes);
    }
    std::string bytes;
    appendText(bytes, groups);
    bytes += writeSnapshot(scene, SnapshotEncoding::cbor);
    return bytes;
}

SceneSnapshot unpackedScene(std::string_view bytes, std::string_view name) {
    std::string_view groups = takeText(bytes);
    SceneSnapshot scene = readSnapshot(bytes, SnapshotEncoding::cbor, name);
    const std::size_t nodeCount = scene.nodes.size();
    while (!groups.empty()) {
        const InstanceList list(takeReferences(groups, nodeCount, name));
        for (const SnapshotRef node : takeReferences(groups, nodeCount, name))
            scene.nodes[node].instances = list;
    }
    return scene;
}

}  // namespace velinor
