#include "cli/node_selection.h"

#include <stdexcept>
#include <vector>

#include "base/text.h"
#include "cli/command_error.h"
#include "cli/name_glob.h"
#include "scene/node_name.h"

namespace velinor {
namespace {

// A pattern and whether a node has fitted it.
struct Choice {
    NameGlob glob;
    bool isMet = false;
};

NameGlob globOf(const std::string& pattern) {
    try {
        return NameGlob(pattern);
    } catch (const std::invalid_argument& error) {
        throw CommandError(kNotRun, "--select: \"" + pattern + "\" is no pattern: " + error.what() +
                                        "; write \\ before a character that is meant as it stands");
    }
}

// Whether a node of that name fits a choice; all that it fits are met.
bool isChosen(const std::u16string& nodeName, std::vector<Choice>& choices) {
    const std::string name = toUtf8(nodeName);
    const std::string nameAlone = parseNodeName(name).name;
    bool isChosen = false;
    for (auto& [glob, isMet] : choices) {
        if (!glob.matches(name) && !glob.matches(nameAlone)) continue;
        isMet = true;
        isChosen = true;
    }
    return isChosen;
}

// Adds the nodes below `marked` to it. Each node is met once, as it has one parent.
void markDescendants(const SceneSnapshot& scene, std::vector<bool>& marked) {
    std::vector<SnapshotRef> open;
    for (SnapshotRef node = 0; node < marked.size(); ++node) {
        if (marked[node]) open.push_back(node);
    }
    while (!open.empty()) {
        const SnapshotRef node = open.back();
        open.pop_back();
        for (const SnapshotRef child : scene.nodes[node].children) {
            if (marked[child]) continue;
            marked[child] = true;
            open.push_back(child);
        }
    }
}

}  // namespace

void selectNodes(SceneSnapshot& scene, std::span<const std::string> patterns) {
    if (patterns.empty()) return;
    std::vector<Choice> choices;
    for (const std::string& pattern : patterns)
        choices.push_back({globOf(pattern)});
    std::vector<bool> marked(scene.nodes.size());
    for (std::size_t i = 0; i < scene.nodes.size(); ++i)
        marked[i] = isChosen(scene.nodes[i].name, choices);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (choices[i].isMet) continue;
        throw CommandError(kNotRun, "--select: no node of the scene is named \"" + patterns[i] +
                                        "\"; \"tolvex inspect\" shows the names");
    }
    markDescendants(scene, marked);
    for (std::size_t i = 0; i < scene.nodes.size(); ++i)
        scene.nodes[i].selected = scene.nodes[i].selected || marked[i];
}

}  // namespace velinor
