// The normals of render vertices where a snapshot does not give them: weighted by corner angle, apart by
// smoothing group.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// The unit normal (v1 - v0) x (v2 - v1) of a face in object space; zero for a face without area. Computed in
// double precision and rounded once.
host::Point3 faceNormal(const SnapshotMesh& mesh, std::uint32_t face);

// The normals of all vertices, those of one vertex in a row.
class RenderNormals {
  public:
    // What the snapshot gives for a vertex, and for the others the rule of docs/scene-snapshot.md. Linear in
    // the mesh: a vertex has at most 32 normals of its own, each of which holds a smoothing bit that no other
    // has.
    explicit RenderNormals(const SnapshotMesh& mesh);

    std::span<const host::RNormal> of(std::uint32_t vertex) const {
        return std::span(normals_).subspan(starts_[vertex], starts_[vertex + 1] - starts_[vertex]);
    }
    bool isSpecified(std::uint32_t vertex) const { return isSpecified_[vertex]; }

  private:
    std::vector<std::size_t> starts_;
    std::vector<host::RNormal> normals_;
    std::vector<bool> isSpecified_;
};

}  // namespace velinor
