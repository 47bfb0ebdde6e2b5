// Triangle meshes, as a snapshot host gives them.
#pragma once

#include <memory>

#include "host/mesh.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// The mesh in the host's layout. `mesh` satisfies checkSnapshot and outlives it.
std::unique_ptr<host::Mesh> makeHostMesh(const SnapshotMesh& mesh);

}  // namespace velinor
