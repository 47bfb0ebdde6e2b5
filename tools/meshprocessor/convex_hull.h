// The convex hull of points.
#pragma once

#include <span>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// The faces of the smallest convex body that holds the `chosen` ones of `points`, which lie between -0.5 and
// 0.5. They face outward, and their corners are chosen points: a box stays the same box. Points within 0.01 %
// of the body's size count as lying on it. The hull of a flat piece is that piece with a front and a back;
// points that lie on one line have none, so no faces. n log n.
Faces convexHull(std::span<const Point> points, std::span<const std::uint32_t> chosen);

}  // namespace velinor
