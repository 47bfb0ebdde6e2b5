// The normal of a vertex as one of its faces sees it.
#pragma once

#include "host/mesh.h"

namespace velinor {

// The normal, in object space, of the vertex of `mesh` whose render vertex is `vertex`, seen from the face
// number `face` with the smoothing mask `smoothing`: the specified one; the face's own where the vertex has
// none or the face is in no smoothing group; the only one; else the last one that shares a group with the
// face. Where none does, the face's own. `mesh` has its normals built.
host::Point3 vertexNormal(const host::Mesh& mesh, const host::RVertex& vertex, std::uint32_t face,
                          std::uint32_t smoothing);

}  // namespace velinor
