#include "cli/node_summary.h"

#include <vector>

#include "base/text.h"

namespace velinor {
namespace {

using host::IGameNode;
using host::IGameObject;

std::string meshKind(std::string_view cleanName, const NamePatterns& patterns) {
    if (patterns.webtablePattern.search(cleanName) || patterns.browserNodePattern.search(cleanName))
        return "web panel";
    return patterns.cameraBoundsPattern.search(cleanName) ? "camera bounds" : "mesh";
}

std::optional<std::int32_t> objectType(IGameNode& node) {
    IGameObject* object = node.GetIGameObject();
    if (object == nullptr) return std::nullopt;
    const std::int32_t type = object->GetIGameType();
    node.ReleaseIGameObject();
    return type;
}

void summariseInstances(const host::IInstanceMgr& manager, host::INode& node, NodeSummary& summary) {
    const host::INodeTab instances = manager.GetInstances(node);
    summary.instanceCount = static_cast<std::size_t>(instances.Count());
    if (instances.Count() == 0) return;
    const host::INode* master = instances[instances.Count() - 1];
    if (master != &node) summary.master = toUtf8(master->GetName());
}

void summariseState(const host::INode& node, NodeSummary& summary) {
    const host::ILayer* layer = node.GetLayer();
    summary.isHidden = node.IsObjectHidden();
    summary.isLayerHidden = layer != nullptr && layer->IsHidden(true);
    summary.isSelected = node.Selected();
}

NodeSummary summarise(host::Host& host, IGameNode& node, std::size_t depth, const NamePatterns& patterns) {
    NodeSummary summary;
    summary.depth = depth;
    summary.name = toUtf8(node.GetName());
    summary.parts = parseNodeName(summary.name);
    summary.kind = nodeKind(objectType(node), summary.parts.name, patterns);
    summariseInstances(*host.GetInstanceMgr(), *node.GetMaxNode(), summary);
    summariseState(*node.GetMaxNode(), summary);
    if (host::IGameMaterial* material = node.GetNodeMaterial()) {
        summary.material = toUtf8(material->GetMaterialName());
    }
    return summary;
}

}  // namespace

std::string nodeKind(std::optional<std::int32_t> type, std::string_view cleanName,
                     const NamePatterns& patterns) {
    if (!type) return "no object";
    switch (*type) {
        case IGameObject::IGAME_UNKNOWN:
            return "unknown object";
        case IGameObject::IGAME_LIGHT:
            return "light";
        case IGameObject::IGAME_MESH:
            return meshKind(cleanName, patterns);
        case IGameObject::IGAME_SPLINE:
            return "spline";
        case IGameObject::IGAME_CAMERA:
            return "camera";
        case IGameObject::IGAME_HELPER:
            return "helper";
        case IGameObject::IGAME_BONE:
            return "bone";
        default:
            return "object type " + std::to_string(*type);
    }
}

void summariseNodes(host::Host& host, const std::function<void(const NodeSummary&)>& take) {
    struct Pending {
        IGameNode* node;
        std::size_t depth;
    };
    const NamePatterns patterns;
    const host::IGameScene& scene = *host.GetIGameInterface();
    std::vector<Pending> pending;  // the next node last
    for (int i = scene.GetTopLevelNodeCount(); i-- > 0;)
        pending.push_back({scene.GetTopLevelNode(i), 0});
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        take(summarise(host, *next.node, next.depth, patterns));
        for (int i = next.node->GetChildCount(); i-- > 0;) {
            pending.push_back({next.node->GetNodeChild(i), next.depth + 1});
        }
    }
}

}  // namespace velinor
