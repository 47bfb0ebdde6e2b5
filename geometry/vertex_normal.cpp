#include "geometry/vertex_normal.h"

#include <algorithm>

namespace velinor {

host::Point3 vertexNormal(const host::Mesh& mesh, const host::RVertex& vertex, std::uint32_t face,
                          std::uint32_t smoothing) {
    if ((vertex.rFlags & host::RVertex::SPECIFIED_NORMAL) != 0) return vertex.normals.front().normal;
    const std::uint32_t count = vertex.rFlags & host::RVertex::NORCT_MASK;
    if (count == 0 || smoothing == 0) return mesh.getFaceNormal(face);
    if (count == 1) return vertex.normals.front().normal;
    const auto shared =
        std::find_if(vertex.normals.rbegin(), vertex.normals.rend(),
                     [smoothing](const host::RNormal& n) { return (n.smGroup & smoothing) != 0; });
    return shared == vertex.normals.rend() ? mesh.getFaceNormal(face) : shared->normal;
}

}  // namespace velinor
