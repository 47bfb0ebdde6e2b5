// A mesh in a space where sizes are the same for all meshes.
#pragma once

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// The points of `mesh` moved to the origin and scaled so that the longest side of their bounding box, the
// extent of the mesh, has length 1; the faces as they are. Every algorithm works there: the libraries compute
// with 32-bit numbers and fixed tolerances, which tiny, huge and far-off meshes would break. Point i stands
// for point i of `mesh`, so results are given as faces and no number ever has to be taken back. Distances are
// fractions of the extent. Throws MeshError where no face has an area.
TriangleMesh toUnitMesh(const TriangleMesh& mesh);

}  // namespace velinor
