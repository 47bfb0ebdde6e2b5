// What "inspect" says of each node of a scene.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/core.h"
#include "scene/name_patterns.h"
#include "scene/node_name.h"

namespace velinor {

// One node, as an artist knows it. Texts are UTF-8.
struct NodeSummary {
    std::size_t depth = 0;              // 0 for top-level nodes
    std::string name;                   // as the host has it
    NodeNameParts parts;                // the name without its parameters, and those
    std::string kind;                   // "mesh", "web panel", "object type 9", ...
    std::size_t instanceCount = 0;      // of the group, the node among them; 0: the host lists none
    std::optional<std::string> master;  // the group's master, where it is another node
    std::optional<std::string> material;
    bool isHidden = false;
    bool isLayerHidden = false;
    bool isSelected = false;
};

// "mesh", "light", "camera", "helper", "spline", "bone", "unknown object", "object type N"; "no object" where
// `type` is absent. Meshes with the names of panels and camera bounds are "web panel" and "camera bounds".
std::string nodeKind(std::optional<std::int32_t> type, std::string_view cleanName,
                     const NamePatterns& patterns);

// Gives every node of the scene to `take`, parents before children, siblings in the host's order.
void summariseNodes(host::Host& host, const std::function<void(const NodeSummary&)>& take);

}  // namespace velinor
