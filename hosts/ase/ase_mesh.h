// The mesh of an ASE object.
#pragma once

#include <cstddef>
#include <string>

#include "host/gmatrix.h"
#include "hosts/ase/ase_lexer.h"
#include "hosts/ase/ase_progress.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

struct AseMesh {
    SnapshotMesh mesh = {};          // in the space of the node
    std::size_t badVertices = 0;     // that are no finite points
    std::size_t lostFaces = 0;       // left out, since they use such vertices
    std::size_t badMapVertices = 0;  // of all channels; taken as (0, 0, 0)
    bool hasVertexColours = false;   // they are passed over
    bool isTurned = false;           // the corners of every face were put into the opposite order
};

// Reads the block of the keyword MESH that comes next. The file holds vertices in world space;
// `objectToWorld` brings them back into the node's. Where that mirrors and the file's face normals oppose the
// faces, the faces are turned. Throws SceneError where an index is out of range, or where something is
// missing that the file has promised.
AseMesh readAseMesh(AseLexer& lexer, const host::GMatrix& objectToWorld, AseProgress& progress);

}  // namespace velinor
