#include "hosts/max/max_nodes.h"

#include <algorithm>

#include "hosts/max/max_values.h"

namespace velinor {

host::HostText MaxNode::GetName() const {
    return node_ == nullptr ? host::HostText() : hostText(node_->GetName());
}

host::ILayer* MaxNode::GetLayer() const {
    if (node_ == nullptr) return nullptr;
    return owner_.of(static_cast<::ILayer*>(node_->GetReference(NODE_LAYER_REF)));
}

bool MaxNode::GetUserPropInt(host::HostText key, std::int32_t& value) const {
    if (node_ == nullptr) return false;
    int read = 0;
    const bool isThere = node_->GetUserPropInt(MSTR(maxString(key).c_str()), read) != 0;
    if (isThere) value = read;
    return isThere;
}

host::Object* MaxNode::EvalWorldState(host::TimeValue t) {
    evaluated_.reset();
    ::Object* object = node_ == nullptr ? nullptr : node_->EvalWorldState(t).obj;
    if (object != nullptr) evaluated_ = std::make_unique<MaxObject>(object, node_);
    return evaluated_.get();
}

host::HostText MaxGameNode::GetName() const {
    return node_ == nullptr ? host::HostText() : hostText(node_->GetName());
}

host::INode* MaxGameNode::GetMaxNode() {
    return &owner_.of(maxNode());
}

host::IGameObject* MaxGameNode::GetIGameObject() {
    if (object_ || node_ == nullptr) return object_.get();
    ::IGameObject* object = node_->GetIGameObject();
    if (object == nullptr) return nullptr;
    isObjectHeld_ = true;
    object_ = makeMaxGameObject(*object, maxNode(), owner_.materials().texmaps());
    return object_.get();
}

void MaxGameNode::ReleaseIGameObject() {
    object_.reset();
    if (!isObjectHeld_) return;
    isObjectHeld_ = false;
    node_->ReleaseIGameObject();
}

// The exporter's default time is the SDK's: the static frame.
host::GMatrix MaxGameNode::GetObjectTM(host::TimeValue t) const {
    return node_ == nullptr ? host::GMatrix() : hostMatrix(node_->GetObjectTM(t));
}

host::IGameNode* MaxGameNode::GetNodeChild(int index) const {
    return &owner_.of(node_ == nullptr ? nullptr : node_->GetNodeChild(index));
}

host::IGameMaterial* MaxGameNode::GetNodeMaterial() {
    return node_ == nullptr ? nullptr : owner_.materials().of(node_->GetNodeMaterial());
}

MaxNodes::~MaxNodes() = default;

MaxGameNode& MaxNodes::of(::IGameNode* node) {
    auto& made = gameNodes_[node];
    if (!made) made = std::make_unique<MaxGameNode>(node, *this);
    return *made;
}

MaxNode& MaxNodes::of(::INode* node) {
    auto& made = nodes_[node];
    if (!made) made = std::make_unique<MaxNode>(node, *this);
    return *made;
}

host::ILayer* MaxNodes::of(::ILayer* layer) {
    if (layer == nullptr) return nullptr;
    auto& made = layers_[layer];
    if (!made) made = std::make_unique<MaxLayer>(*layer);
    return made.get();
}

void MaxNodes::clear() {
    for (auto& [source, node] : gameNodes_) {
        if (node) node->ReleaseIGameObject();
    }
    gameNodes_.clear();
    nodes_.clear();
    layers_.clear();
    materials_ = std::make_unique<MaxMaterials>();
}

host::INodeTab MaxInstances::GetInstances(const host::INode& node) const {
    const auto& own = static_cast<const MaxNode&>(node);
    const auto known = groups_.find(&node);
    if (known != groups_.end()) return host::INodeTab(*known->second);
    ::IInstanceMgr* manager = ::IInstanceMgr::GetInstanceMgr();
    if (own.source() == nullptr || manager == nullptr) return host::INodeTab(own.self());

    const auto group = std::make_shared<const Group>(groupOf(*own.source(), *manager));
    if (group->size() == 1 && group->front() == &node) return host::INodeTab(own.self());
    groups_[&node] = group;
    if (std::ranges::find(*group, &node) != group->end()) {
        for (const host::INode* member : *group)
            groups_[member] = group;
    }
    return host::INodeTab(*group);
}

MaxInstances::Group MaxInstances::groupOf(::INode& source, ::IInstanceMgr& manager) const {
    ::INodeTab given;
    manager.GetInstances(source, given);
    static_cast<void>(given[given.Count() - 1]);  // an empty list is the host's fault, and told in its words
    Group group;
    for (int i = 0; i < given.Count(); ++i)
        group.push_back(&nodes_.of(given[i]));
    return group;
}

}  // namespace velinor
