// Materials and texture maps, as a snapshot host gives them.
#pragma once

#include <vector>

#include "host/material.h"
#include "hosts/snapshot/scene_snapshot.h"
#include "hosts/snapshot/snapshot_host_property.h"

namespace velinor {

class SnapshotHostMap;
class SnapshotHostMaterial;

// All maps and materials of a scene, in the scene's order, which is the order of their addresses, too.
// `scene` outlives them.
class SnapshotHostMaterials {
  public:
    explicit SnapshotHostMaterials(const SceneSnapshot& scene);
    SnapshotHostMaterials(const SnapshotHostMaterials&) = delete;
    SnapshotHostMaterials& operator=(const SnapshotHostMaterials&) = delete;
    ~SnapshotHostMaterials();

    // Null for none.
    host::IGameMaterial* material(std::optional<SnapshotRef> ref) const;
    host::Texmap* map(std::optional<SnapshotRef> ref) const;

  private:
    mutable std::vector<SnapshotHostMap> maps_;
    mutable std::vector<SnapshotHostMaterial> materials_;
};

}  // namespace velinor
