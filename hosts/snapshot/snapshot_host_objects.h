// The objects of nodes, as a snapshot host gives them.
#pragma once

#include <memory>
#include <vector>

#include "host/object.h"
#include "hosts/snapshot/scene_snapshot.h"
#include "hosts/snapshot/snapshot_host_property.h"

namespace velinor {

// Both views of a node's object: the scene interface's and the host's. `object` and `scene` outlive it.
class SnapshotHostObject {
  public:
    virtual ~SnapshotHostObject() = default;

    virtual host::IGameObject& gameObject() = 0;
    virtual host::Object& maxObject() = 0;
};

// A mesh's data is built when it is first asked for.
std::unique_ptr<SnapshotHostObject> makeHostObject(const SnapshotObject& object, const SceneSnapshot& scene);

}  // namespace velinor
