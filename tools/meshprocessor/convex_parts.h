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

// The decomposition's time grows faster than its input, and finer input does not make better parts: of a
// sphere, 2000 faces take 4 s and become 1 part, 8000 take 49 s and become 19 parts.
inline constexpr std::size_t kFinestResolution = 2000;

// Convex hulls over the points of `unit` that together cover its surface, nearly as far as the resolution
// shows it: at most `mostHulls`, fewer where they do. Each faces outward; a flat piece of the mesh may become
// a flat hull with a front and a back. Deterministic.
std::vector<Faces> convexParts(const TriangleMesh& unit, const DecompositionLimits& limits);

}  // namespace velinor
