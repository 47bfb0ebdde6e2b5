// A mesh as a few convex parts.
#pragma once

#include <cstddef>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

struct DecompositionLimits {
    std::size_t resolution =
        0;  // the most faces and points that are looked at; at most kFinestResolution count
    std::size_t mostHulls = 0;

    bool operator==(const DecompositionLimits&) const = default;
};

// The decomposition's time grows faster than its input: 8000 faces take some seconds, ten times as many would
// take minutes.
inline constexpr std::size_t kFinestResolution = 8000;

// Convex hulls over the points of `unit` that together cover its surface, nearly as far as the resolution
// shows it: at most `mostHulls`, fewer where they do. Each faces outward; a flat piece of the mesh may become
// a flat hull with a front and a back. Deterministic.
std::vector<Faces> convexParts(const TriangleMesh& unit, const DecompositionLimits& limits);

}  // namespace velinor
