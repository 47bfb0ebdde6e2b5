// Makes one point of points that lie at one place.
#pragma once

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// `mesh` with each position once. A file has a vertex for each normal and texture coordinate; a shape has
// none of these, and its faces are neighbours where they share points. Positions are equal when their numbers
// are. Faces keep their order; those with two corners at one place are dropped, and so are points without
// faces.
TriangleMesh weld(const TriangleMesh& mesh);

}  // namespace velinor
