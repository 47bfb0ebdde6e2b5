// Faces in groups: what hangs together, what lies together.
#pragma once

#include <cstddef>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

using Clusters = std::vector<Faces>;

// `faces` in pieces that hang together by edges, those first whose first face comes first.
Clusters connectedPieces(const Faces& faces);

// `faces` of `mesh` in at most `most` clusters of faces that lie together: the one with the largest box is
// cut at the middle, as long as there may be one more.
Clusters splitBySpace(const TriangleMesh& mesh, const Faces& faces, std::size_t most);

// `clusters` of faces of `mesh` with some of them put together so that at most `most` (at least 1) are left:
// those whose common box is the least larger than theirs. With thousands of clusters, what lies in the same
// cell of a grid is put together before.
Clusters joinByBoxes(const TriangleMesh& mesh, Clusters clusters, std::size_t most);

}  // namespace velinor
