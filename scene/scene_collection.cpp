#include "scene/scene_collection.h"

#include <utility>

#include "base/text.h"
#include "scene/instances.h"
#include "scene/node_name.h"

namespace velinor {
namespace {

using host::IGameNode;
using host::IGameObject;

// A node whose children are being walked.
struct OpenNode {
    IGameNode* node;
    SceneNodeRecord* record;  // null: the node is not in the tree, so its descendants are not either
    int nextChild = 0;
    int childCount = 0;
};

std::string nameForReport(IGameNode& node) {
    return toUtf8(node.GetName());
}

// Why the filters leave the node out; nothing where it passes.
std::optional<MessageId> filterReason(const ExportSettings& settings, const host::INode& node) {
    if (!settings.exportHidden) {
        if (node.IsObjectHidden()) return MessageId::nodeHidden;
        const host::ILayer* layer = node.GetLayer();
        if (layer != nullptr && layer->IsHidden(true)) return MessageId::nodeLayerHidden;
    }
    if (settings.selectionOnly && !node.Selected()) return MessageId::nodeNotSelected;
    return std::nullopt;
}

void take(ClassifiedNode& classified, SceneNodeKind kind) {
    classified.kind = kind;
    classified.taken = true;
}

void classifyLight(const CollectionContext& context, IGameNode& node, ClassifiedNode& classified) {
    if (!context.settings.exportLights) {
        classified.reason = MessageId::nodeLightsOff;
        return;
    }
    context.scene.lightNodes.push_back(&node);
    take(classified, SceneNodeKind::Light);
}

void classifyMesh(const CollectionContext& context, IGameNode& node, const std::string& cleanName,
                  ClassifiedNode& classified) {
    const NamePatterns& patterns = context.patterns;
    if (patterns.webtablePattern.search(cleanName) || patterns.browserNodePattern.search(cleanName)) {
        context.scene.webtableNodes.push_back(&node);
    } else if (patterns.cameraBoundsPattern.search(cleanName)) {
        context.scene.cameraBoundsNodes.push_back(&node);
    } else if (!context.settings.exportGeometry) {
        classified.reason = MessageId::nodeGeometryOff;
    } else {
        if (classified.isInstanceMaster) context.scene.meshNodes.push_back(&node);
        take(classified, SceneNodeKind::Mesh);
    }
}

void classifyCamera(const CollectionContext& context, IGameNode& node, ClassifiedNode& classified) {
    if (context.settings.exportCamera) {
        context.scene.cameraNodes.push_back(&node);
    } else {
        classified.reason = MessageId::nodeCamerasOff;
    }
}

void classifyByType(const CollectionContext& context, IGameNode& node, std::int32_t type,
                    const std::string& cleanName, ClassifiedNode& classified) {
    switch (type) {
        case IGameObject::IGAME_LIGHT:
            return classifyLight(context, node, classified);
        case IGameObject::IGAME_MESH:
            return classifyMesh(context, node, cleanName, classified);
        case IGameObject::IGAME_CAMERA:
            return classifyCamera(context, node, classified);
        case IGameObject::IGAME_HELPER:
            return take(classified, SceneNodeKind::Helper);
        default:
            classified.reason = MessageId::nodeTypeNotExported;
    }
}

// One entry a node: a name can hold 100,000 pieces that are no parameters.
void reportIgnoredParameters(const CollectionContext& context, IGameNode& node, const NodeNameParts& parts) {
    const std::size_t others = parts.ignored.size() - 1;
    context.report.add(MessageId::nodeNameParameterIgnored, nameForReport(node),
                       '"' + parts.ignored.front() + '"' +
                           (others == 0 ? std::string() : " and " + std::to_string(others) + " more"));
}

// Tells why a node is left out, where it is.
void reportNode(const CollectionContext& context, IGameNode& node, const ClassifiedNode& classified,
                const OpenNode* parent) {
    if (classified.reason) {
        context.report.add(*classified.reason, nameForReport(node));
    } else if (classified.taken && parent != nullptr && parent->record == nullptr) {
        context.report.add(MessageId::nodeUnderDroppedParent, nameForReport(node),
                           "below \"" + nameForReport(*parent->node) + "\"");
    }
}

// Moves a taken node into the tree; null where it is not taken or has no place there.
SceneNodeRecord* addRecord(IGameNode& node, ClassifiedNode&& classified, SceneNodeRecord* parent) {
    if (parent == nullptr || !classified.taken) return nullptr;
    SceneNodeRecord& record = parent->children.emplace_back();
    record.parent = parent;
    record.node = &node;
    record.kind = classified.kind;
    record.isInstanceMaster = classified.isInstanceMaster;
    record.masterName = std::move(classified.masterName);
    record.paramKeys = std::move(classified.paramKeys);
    record.paramValues = std::move(classified.paramValues);
    return &record;
}

OpenNode visit(const CollectionContext& context, IGameNode& node, SceneNodeRecord* parentRecord,
               const OpenNode* parent) {
    ClassifiedNode classified = classifyNode(context, node, node.GetIGameObject());
    node.ReleaseIGameObject();
    reportNode(context, node, classified, parent);
    context.progress.advance(1);
    return {&node, addRecord(node, std::move(classified), parentRecord), 0, node.GetChildCount()};
}

// Depth first from `start`, whose own record stands. An explicit stack, since scenes can be deeper than the
// call stack.
void walkBelow(const CollectionContext& context, const OpenNode& start) {
    std::vector<OpenNode> open{start};
    while (!open.empty()) {
        OpenNode& current = open.back();
        if (current.nextChild == current.childCount) {
            open.pop_back();
            continue;
        }
        IGameNode& child = *current.node->GetNodeChild(current.nextChild++);
        const OpenNode opened = visit(context, child, current.record, &current);
        if (opened.childCount > 0) open.push_back(opened);
    }
}

void reportBeyondFirst(const CollectionContext& context, MessageId message, const NodeList& nodes) {
    for (std::size_t i = 1; i < nodes.size(); ++i)
        context.report.add(message, nameForReport(*nodes[i]));
}

}  // namespace

ClassifiedNode classifyNode(const CollectionContext& context, IGameNode& node, IGameObject* object) {
    ClassifiedNode classified;
    NodeNameParts parts = nodeNameUtf8(node);
    if (!parts.ignored.empty()) reportIgnoredParameters(context, node, parts);
    classified.paramKeys = std::move(parts.paramKeys);
    classified.paramValues = std::move(parts.paramValues);
    if (object == nullptr) {
        classified.reason = MessageId::nodeWithoutObject;
        return classified;
    }
    const std::int32_t type = object->GetIGameType();
    context.scene.objectNodes.push_back(&node);

    classified.reason = filterReason(context.settings, *node.GetMaxNode());
    if (classified.reason) return classified;

    classified.isInstanceMaster = isInstanceMaster(context.instances, node);
    if (!classified.isInstanceMaster) {
        classified.masterName = parseNodeName(instanceMasterName(context.instances, node)).name;
    }
    classifyByType(context, node, type, parts.name, classified);
    return classified;
}

void collectChildren(const CollectionContext& context, SceneNodeRecord* parent, IGameNode& node) {
    walkBelow(context, {&node, parent, 0, node.GetChildCount()});
}

bool collectScene(const CollectionContext& context, const host::IGameScene& scene) {
    context.progress.beginPhase("Collecting nodes", static_cast<std::uint64_t>(scene.GetTotalNodeCount()));
    for (int i = 0; i < scene.GetTopLevelNodeCount(); ++i) {
        const OpenNode top = visit(context, *scene.GetTopLevelNode(i), &context.scene.rootRecord, nullptr);
        if (top.childCount > 0) collectChildren(context, top.record, *top.node);
    }
    reportBeyondFirst(context, MessageId::nodeExtraCamera, context.scene.cameraNodes);
    reportBeyondFirst(context, MessageId::nodeExtraCameraBounds, context.scene.cameraBoundsNodes);
    return true;
}

}  // namespace velinor
