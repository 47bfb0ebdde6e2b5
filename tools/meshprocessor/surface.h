// Distances to triangles.
#pragma once

#include <memory>
#include <span>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// Triangles that can be asked how far away they are. Built once in n log n; a question looks at few of them.
// Keeps a view of the points, which must outlive it.
class Surface {
  public:
    Surface(std::span<const Point> points, const Faces& faces);
    ~Surface();
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    // The distance from `point` to the nearest triangle; infinite where there is none.
    float distance(const Point& point) const;

    // Whether some triangle is no farther than `limit`. Cheaper than distance().
    bool isWithin(const Point& point, float limit) const;

    // Whether `point` is inside a solid that the triangles bound. Where solids overlap, inside any.
    // Meaningful for closed faces that look outward, away from the surface.
    bool contains(const Point& point) const;

  private:
    struct Tree;
    std::unique_ptr<const Tree> tree_;
};

}  // namespace velinor
