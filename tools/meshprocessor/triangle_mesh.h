// Triangles over a list of points.
#pragma once

#include <array>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace velinor {

using Point = std::array<float, 3>;
using Face = std::array<std::uint32_t, 3>;  // indices of points, counter-clockwise seen from outside
using Faces = std::vector<Face>;

struct TriangleMesh {
    std::vector<Point> points;
    Faces faces;

    bool operator==(const TriangleMesh&) const = default;
};

// The points that `faces` use: each once, ascending.
std::vector<std::uint32_t> cornersOf(const Faces& faces);

// A mesh that cannot be read, used or written. The text names the file or the part that is at fault, and says
// what to do.
class MeshError final : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace velinor
