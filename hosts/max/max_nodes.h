// Nodes, layers and instances of 3ds Max.
#pragma once

#include "hosts/max/max_sdk.h"

#include <memory>
#include <unordered_map>
#include <vector>

#include "host/node.h"
#include "hosts/max/max_materials.h"
#include "hosts/max/max_objects.h"

namespace velinor {

class MaxNodes;

class MaxLayer final : public host::ILayer {
  public:
    explicit MaxLayer(::ILayer& layer) : layer_(layer) {}
    bool IsHidden(bool includeParent) const override { return layer_.IsHidden(includeParent); }

  private:
    ::ILayer& layer_;
};

// The host's own node. Without one, null, it is a shown node that is not selected and has nothing.
class MaxNode final : public host::INode {
  public:
    MaxNode(::INode* node, MaxNodes& owner) : node_(node), owner_(owner) {}

    host::HostText GetName() const override;
    bool Selected() const override { return node_ != nullptr && node_->Selected() != 0; }
    bool IsObjectHidden() const override { return node_ != nullptr && node_->IsObjectHidden() != 0; }
    host::ILayer* GetLayer() const override;
    bool GetUserPropInt(host::HostText key, std::int32_t& value) const override;
    host::Object* EvalWorldState(host::TimeValue t) override;

    ::INode* source() const { return node_; }

    // The list that holds this node alone.
    std::span<host::INode* const> self() const { return {&self_, 1}; }

  private:
    ::INode* node_;
    MaxNodes& owner_;
    host::INode* self_ = this;
    std::unique_ptr<MaxObject> evaluated_;
};

// The scene interface's view of a node. Without one, null, it is a node without object and children.
class MaxGameNode final : public host::IGameNode {
  public:
    MaxGameNode(::IGameNode* node, MaxNodes& owner) : node_(node), owner_(owner) {}

    host::HostText GetName() const override;
    host::INode* GetMaxNode() override;
    host::IGameObject* GetIGameObject() override;
    void ReleaseIGameObject() override;
    host::GMatrix GetObjectTM(host::TimeValue t) const override;
    int GetChildCount() const override { return node_ == nullptr ? 0 : node_->GetChildCount(); }
    host::IGameNode* GetNodeChild(int index) const override;
    host::IGameMaterial* GetNodeMaterial() override;

  private:
    ::INode* maxNode() const { return node_ == nullptr ? nullptr : node_->GetMaxNode(); }

    ::IGameNode* node_;
    MaxNodes& owner_;
    std::unique_ptr<host::IGameObject> object_;
    bool isObjectHeld_ = false;  // the SDK's object is there, to be released
};

// All nodes that an export has met, each with one address until `clear`. Null stands for a node of which the
// SDK gave none.
class MaxNodes {
  public:
    MaxNodes() = default;
    MaxNodes(const MaxNodes&) = delete;
    MaxNodes& operator=(const MaxNodes&) = delete;
    ~MaxNodes();

    MaxGameNode& of(::IGameNode* node);
    MaxNode& of(::INode* node);
    host::ILayer* of(::ILayer* layer);  // null for null
    MaxMaterials& materials() { return *materials_; }

    // Releases every object that is still held and forgets all nodes and materials.
    void clear();

  private:
    // Each only looked up, or walked where the order does not matter.
    std::unordered_map<::IGameNode*, std::unique_ptr<MaxGameNode>> gameNodes_;
    std::unordered_map<::INode*, std::unique_ptr<MaxNode>> nodes_;
    std::unordered_map<::ILayer*, std::unique_ptr<MaxLayer>> layers_;
    std::unique_ptr<MaxMaterials> materials_ = std::make_unique<MaxMaterials>();
};

// Which nodes share one object. The host is asked once for each group: it makes the list anew each time, and
// an export asks for it at every member.
class MaxInstances final : public host::IInstanceMgr {
  public:
    explicit MaxInstances(MaxNodes& nodes) : nodes_(nodes) {}

    // What the host's own table throws on an empty list leaves this.
    host::INodeTab GetInstances(const host::INode& node) const override;

    void clear() { groups_.clear(); }

  private:
    using Group = std::vector<host::INode*>;
    Group groupOf(::INode& source, ::IInstanceMgr& manager) const;

    MaxNodes& nodes_;
    mutable std::unordered_map<const host::INode*, std::shared_ptr<const Group>> groups_;  // only looked up
};

}  // namespace velinor
