// The walk over the host's scene: which node is exported, and as what.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"
#include "base/progress.h"
#include "base/report.h"
#include "host/core.h"
#include "plugin/export_settings.h"
#include "scene/collected_scene.h"
#include "scene/name_patterns.h"

namespace velinor {

// What collection works with. Nothing is owned.
struct CollectionContext {
    const host::IInstanceMgr& instances;
    const ExportSettings& settings;
    const NamePatterns& patterns;
    CollectedScene& scene;
    Report& report;
    Progress& progress;
};

// One node's classification.
struct ClassifiedNode {
    bool taken = false;
    bool isInstanceMaster = true;
    SceneNodeKind kind = SceneNodeKind::Helper;
    std::string masterName;
    std::vector<std::string> paramKeys;
    std::vector<std::string> paramValues;
    std::optional<MessageId> reason;  // why the node is in no list and not taken; absent where it has a use
};

// Walks the whole scene, depth first, and fills the tree and the lists. The descendants of a node that is not
// taken are classified, so they come into the lists, but are not in the tree. What is left out is told in the
// report. Always true. Passes on what the host throws (host::TabOutOfRangeException).
bool collectScene(const CollectionContext& context, const host::IGameScene& scene);

// Appends the records of `node`'s taken descendants to `parent`. With no `parent` they only come into the
// lists.
void collectChildren(const CollectionContext& context, SceneNodeRecord* parent, host::IGameNode& node);

// Classifies `node`, whose object is `object` (null: none), and appends it to the lists.
ClassifiedNode classifyNode(const CollectionContext& context, host::IGameNode& node,
                            host::IGameObject* object);

}  // namespace velinor
