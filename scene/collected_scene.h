// What scene collection leaves for the writers.
#pragma once

#include <vector>

#include "host/node.h"
#include "scene/scene_node_record.h"

namespace velinor {

using NodeList = std::vector<host::IGameNode*>;

// The classified nodes of a scene: as a tree and as flat lists in visiting order, parents before children.
// Nodes are the host's. Collection appends; a fresh value is empty.
struct CollectedScene {
    SceneNodeRecord rootRecord;  // without a node; its children are the top-level records
    NodeList objectNodes;        // every node that has an object
    NodeList lightNodes;
    NodeList meshNodes;  // instance masters only: each yields one mesh file
    NodeList cameraNodes;
    NodeList cameraBoundsNodes;
    NodeList webtableNodes;

    // Empties tree and lists.
    void clear() {
        destroyTree(
            rootRecord.children, [](SceneNodeRecord & record) -> auto& { return record.children; });
        for (NodeList* list :
             {&objectNodes, &lightNodes, &meshNodes, &cameraNodes, &cameraBoundsNodes, &webtableNodes}) {
            list->clear();
        }
    }
};

}  // namespace velinor
