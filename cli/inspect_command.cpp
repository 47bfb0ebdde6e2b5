// The command "inspect": the nodes of a scene as a tree, and the lists that an export would work through.
//
//     Table [color: red]: mesh, named "Table", color = red, material "Oak", selected
//       Lamp: light, hidden
//
//     An export with default settings takes
//     Meshes (1)
//       Table
#include <algorithm>
#include <array>
#include <map>

#include "base/report.h"
#include "base/text.h"
#include "cli/commands.h"
#include "cli/json_text.h"
#include "cli/node_summary.h"
#include "cli/progress_bar.h"
#include "cli/scene_source.h"
#include "cli/standard_output.h"
#include "hosts/snapshot/snapshot_host.h"
#include "scene/scene_collection.h"

namespace velinor {
namespace {

using nlohmann::ordered_json;

// Deeper nodes are not drawn further to the right: lines of deep chains would grow with their depth.
constexpr std::size_t kDeepestIndent = 20;

std::string indentFor(std::size_t depth) {
    std::string text(2 * std::min(depth, kDeepestIndent), ' ');
    if (depth > kDeepestIndent) text += "(depth " + std::to_string(depth) + ") ";
    return text;
}

std::string instanceText(const NodeSummary& node) {
    if (node.instanceCount == 0) return ", with an empty list of instances (an export ends here)";
    if (node.master) return ", instance of \"" + printable(*node.master) + "\"";
    if (node.instanceCount > 1) return ", master of " + std::to_string(node.instanceCount) + " instances";
    return "";
}

std::string nodeLine(const NodeSummary& node) {
    std::string line = indentFor(node.depth) + printable(node.name) + ": " + node.kind;
    if (node.parts.name != node.name) line += ", named \"" + printable(node.parts.name) + "\"";
    for (std::size_t i = 0; i < node.parts.paramKeys.size(); ++i) {
        line += ", " + printable(node.parts.paramKeys[i]) + " = " + printable(node.parts.paramValues[i]);
    }
    line += instanceText(node);
    if (node.material) line += ", material \"" + printable(*node.material) + "\"";
    if (node.isHidden) line += ", hidden";
    if (node.isLayerHidden) line += ", layer hidden";
    if (node.isSelected) line += ", selected";
    return line + "\n";
}

ordered_json nodeJson(const NodeSummary& node) {
    ordered_json parameters = ordered_json::array();
    for (std::size_t i = 0; i < node.parts.paramKeys.size(); ++i) {
        parameters.push_back({{"key", node.parts.paramKeys[i]}, {"value", node.parts.paramValues[i]}});
    }
    return {{"depth", node.depth},
            {"name", node.name},
            {"cleanName", node.parts.name},
            {"parameters", parameters},
            {"kind", node.kind},
            {"instances", node.instanceCount},
            {"master", node.master ? ordered_json(*node.master) : ordered_json()},
            {"material", node.material ? ordered_json(*node.material) : ordered_json()},
            {"hidden", node.isHidden},
            {"layerHidden", node.isLayerHidden},
            {"selected", node.isSelected}};
}

struct ListOfNodes {
    const char* heading;
    const char* key;  // in JSON
    NodeList CollectedScene::*list;
};

constexpr auto kLists = std::to_array<ListOfNodes>({
    {"Meshes", "meshes", &CollectedScene::meshNodes},
    {"Lights", "lights", &CollectedScene::lightNodes},
    {"Cameras", "cameras", &CollectedScene::cameraNodes},
    {"Camera bounds", "cameraBounds", &CollectedScene::cameraBoundsNodes},
    {"Web panels", "webtables", &CollectedScene::webtableNodes},
});

using KindCounts = std::map<std::string, std::size_t>;

// What the collection of an export with default settings finds. Where the host breaks off, `failure` says why
// and the lists hold what came before.
struct Collected {
    CollectedScene scene;
    std::string failure;
};

void collect(host::Host& host, Progress& progress, Collected& collected) {
    const ExportSettings settings;
    const NamePatterns patterns;
    Report report;
    try {
        collectScene({*host.GetInstanceMgr(), settings, patterns, collected.scene, report, progress},
                     *host.GetIGameInterface());
    } catch (const host::TabOutOfRangeException& error) {
        collected.failure = error.what();
    }
}

std::string totalsLine(const KindCounts& counts) {
    std::size_t total = 0;
    std::string kinds;
    for (const auto& [kind, count] : counts) {
        total += count;
        kinds += (kinds.empty() ? ": " : ", ") + std::to_string(count) + " " + kind;
    }
    return std::to_string(total) + (total == 1 ? " node" : " nodes") + kinds + "\n";
}

std::string cleanName(host::IGameNode& node) {
    return nodeNameUtf8(node).name;
}

void writeText(host::Host& host, const Collected& collected, TextSink& text) {
    KindCounts counts;
    summariseNodes(host, [&](const NodeSummary& node) {
        ++counts[node.kind];
        text.write(nodeLine(node));
    });
    text.write(totalsLine(counts));
    text.write("\nAn export with default settings takes\n");
    for (const auto& [heading, key, list] : kLists) {
        const NodeList& nodes = collected.scene.*list;
        text.write(std::string(heading) + " (" + std::to_string(nodes.size()) + ")\n");
        for (host::IGameNode* node : nodes)
            text.write("  " + printable(cleanName(*node)) + "\n");
    }
    if (!collected.failure.empty())
        text.write("and ends there with a host error: " + collected.failure + "\n");
}

void writeJson(host::Host& host, const Collected& collected, TextSink& text) {
    KindCounts counts;
    JsonObjectWriter document(text);
    document.list("nodes", [&](const auto& item) {
        summariseNodes(host, [&](const NodeSummary& node) {
            ++counts[node.kind];
            item(nodeJson(node));
        });
    });
    document.member("totals", counts);
    for (const auto& [heading, key, list] : kLists) {
        document.list(key, [&, nodes = &(collected.scene.*list)](const auto& item) {
            for (host::IGameNode* node : *nodes)
                item(cleanName(*node));
        });
    }
    document.member("hostError",
                    collected.failure.empty() ? ordered_json() : ordered_json(collected.failure));
    document.finish();
}

}  // namespace

ExitStatus runInspect(const InspectArguments& arguments) {
    ProgressBar progress(progressStyleOfStandardError());
    progress.announce("reading " + sceneName(arguments.scene) + " ...");
    const SceneSource source = openScene(arguments.scene, progress, {SceneImages::leave, arguments.reading});
    const auto host = makeSnapshotHost(source.scene, source.folder);
    host->GetIGameInterface()->InitialiseIGame(false);
    Collected collected;
    collect(*host, progress, collected);
    progress.clear();
    for (const ImportNote& note : source.notes.notes())
        progress.announce(note.subject + ": " + note.text);

    StandardOutput output;
    if (arguments.json) {
        writeJson(*host, collected, output);
    } else {
        writeText(*host, collected, output);
    }
    output.finish();
    return kDone;
}

}  // namespace velinor
