// Faces in groups that are nearly convex.
#pragma once

#include <cstddef>
#include <optional>

#include "tools/meshprocessor/face_clusters.h"

namespace velinor {

struct ClusterLimits {
    double concavity = 0;    // how deep a dent a cluster may have, as a fraction of the extent of the piece
    std::size_t fewest = 1;  // the number of clusters below which none are put together
};

// The `faces` over the points of `mesh`, which must hang together by edges, in clusters: neighbours are put
// together until a cluster would be deeper than the concavity, or the fewest clusters are left. Nothing where
// the decomposition library gives up. It runs in a process of its own, since odd meshes make it crash or run
// for very long: either ends that process and nothing else.
std::optional<Clusters> concavityClusters(const TriangleMesh& mesh, const Faces& faces,
                                          const ClusterLimits& limits);

}  // namespace velinor
