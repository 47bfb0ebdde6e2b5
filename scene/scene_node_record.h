// The tree of nodes that an export writes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/stable_list.h"
#include "host/node.h"

namespace velinor {

// What a node becomes in the package.
enum class SceneNodeKind : std::int32_t { Helper = 0, Light = 1, Mesh = 2 };

// One exported node. Records stay where they are while the tree grows.
struct SceneNodeRecord {
    SceneNodeRecord* parent = nullptr;  // null for the root
    host::IGameNode* node = nullptr;    // not owned; null for the root
    SceneNodeKind kind = SceneNodeKind::Helper;
    bool isInstanceMaster = true;
    std::string masterName;                // cleaned name of the group's master; empty for the master itself
    std::vector<std::string> paramKeys;    // from the node's own name, in the order written
    std::vector<std::string> paramValues;  // one for each key
    StableList<SceneNodeRecord> children;  // in the host's order, only what is exported

    SceneNodeRecord() = default;
    SceneNodeRecord(const SceneNodeRecord&) = delete;
    SceneNodeRecord& operator=(const SceneNodeRecord&) = delete;
    SceneNodeRecord(SceneNodeRecord&&) = delete;
    SceneNodeRecord& operator=(SceneNodeRecord&&) = delete;
    ~SceneNodeRecord() {
        destroyTree(
            children, [](SceneNodeRecord & record) -> auto& { return record.children; });
    }
};

}  // namespace velinor
