// Nodes, layers and instances. Everything here belongs to the scene and lives as long as it.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>

#include "host/gmatrix.h"
#include "host/material.h"
#include "host/object.h"
#include "host/text.h"
#include "host/time.h"

namespace velinor::host {

class INode;

// A layer of the scene.
class ILayer {
  public:
    virtual ~ILayer() = default;

    // Whether the layer is hidden; with `includeParent` a hidden layer above it counts as well.
    virtual bool IsHidden(bool includeParent) const = 0;
};

// What reading past the end of a host list throws.
class TabOutOfRangeException : public std::out_of_range {
  public:
    TabOutOfRangeException() : std::out_of_range("Invalid index passed into a Max SDK Tab::operator[]") {}
};

// A list of nodes, valid until the next call of what gave it. Indexing outside it throws
// TabOutOfRangeException.
class INodeTab {
  public:
    INodeTab() = default;
    explicit INodeTab(std::span<INode* const> nodes) : nodes_(nodes) {}

    int Count() const { return static_cast<int>(nodes_.size()); }
    INode* operator[](int index) const {
        if (index < 0 || index >= Count()) throw TabOutOfRangeException();
        return nodes_[static_cast<std::size_t>(index)];
    }

  private:
    std::span<INode* const> nodes_;
};

// The host's own node.
class INode {
  public:
    virtual ~INode() = default;

    virtual HostText GetName() const = 0;
    virtual bool Selected() const = 0;

    // The node's own hidden flag; layers and categories do not count.
    virtual bool IsObjectHidden() const = 0;

    // The layer (the node's reference number 6); null where it has none.
    virtual ILayer* GetLayer() const = 0;

    // The integer user property of that key: true, and `value` is set; otherwise false, and `value` stays as
    // it was.
    virtual bool GetUserPropInt(HostText key, std::int32_t& value) const = 0;

    // The object as the modifiers leave it at time `t`; null where the node has none. Valid until the next
    // evaluation.
    virtual Object* EvalWorldState(TimeValue t) = 0;
};

// Knows which nodes share one object.
class IInstanceMgr {
  public:
    virtual ~IInstanceMgr() = default;

    // All instances of the node's object, the node itself among them, in the host's order. The last is the
    // group's master. Must not cost more than a constant however large the group is: it is asked for each of
    // its members.
    virtual INodeTab GetInstances(const INode& node) const = 0;
};

// The scene interface's view of a node.
class IGameNode {
  public:
    virtual ~IGameNode() = default;

    virtual HostText GetName() const = 0;

    virtual INode* GetMaxNode() = 0;

    // The node's object; null where it has none. The same one on each call until ReleaseIGameObject.
    virtual IGameObject* GetIGameObject() = 0;

    // Frees the object's data. The object must not be used afterwards, the node may.
    virtual void ReleaseIGameObject() = 0;

    // Object space to world space, the object's offset from the node included: the space in which meshes have
    // their vertices.
    virtual GMatrix GetObjectTM(TimeValue t = TIME_NegInfinity) const = 0;

    virtual int GetChildCount() const = 0;
    virtual IGameNode* GetNodeChild(int index) const = 0;

    // The material; null where the node has none.
    virtual IGameMaterial* GetNodeMaterial() = 0;
};

}  // namespace velinor::host
