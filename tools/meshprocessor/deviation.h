// How far a shape is from the mesh that it stands for.
#pragma once

#include <cstddef>
#include <memory>

#include "tools/meshprocessor/surface.h"
#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// Measures shapes over the points of one mesh. Distances are taken at all points of each surface, or at every
// n-th where there are more than a million, and at about `places` places between them. Keeps a view of the
// mesh, which must outlive it.
class DeviationMeter {
  public:
    explicit DeviationMeter(const TriangleMesh& mesh, std::size_t places = 100'000)
        : mesh_(mesh), places_(places) {}

    // The largest distance between the two surfaces, from either to the other.
    float betweenSurfaces(const Faces& shape);

    // The largest distance by which closed parts stand out of the mesh, or the mesh out of them. What lies
    // inside of both does not count, such as walls between parts. An open mesh has no inside: distances are
    // then to its surface.
    float betweenSolids(const std::vector<Faces>& parts);

  private:
    const Surface& meshSurface();

    const TriangleMesh& mesh_;
    std::size_t places_;
    std::unique_ptr<const Surface> meshSurface_;
};

}  // namespace velinor
