// The mesh of an ASE object.
#pragma once

#include <cstddef>
#include <vector>

#include "host/gmatrix.h"
#include "hosts/ase/ase_lexer.h"
#include "hosts/ase/ase_progress.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

struct AseMesh {
    SnapshotMesh mesh = {};
    std::vector<host::Point3> faceNormals = {};  // in the space of the node; empty: none, or not kept
    std::size_t badVertices = 0;                 // that are no finite points
    std::size_t lostFaces = 0;                   // left out, since they use such vertices
    std::size_t badMapVertices = 0;              // of all channels; taken as (0, 0, 0)
    bool hasVertexColours = false;               // they are passed over
    bool isTurned = false;                       // the corners of every face were put into the opposite order
};

// Only nodes that mirror need the normals, and these are most of a file's bytes.
enum class AseNormals { passedOver, kept };

// Reads the block of the keyword MESH that comes next, with vertices in world space as the file holds them.
// Throws SceneError where an index is out of range, or where something is missing that the file has promised.
AseMesh readAseMesh(AseLexer& lexer, AseNormals normals, AseProgress& progress);

// Brings the vertices from world space into that of the node, and leaves out those that are no finite points,
// with their faces. Where `objectToWorld` mirrors and the face normals oppose the faces, the faces are
// turned.
void bringIntoNode(AseMesh& read, const host::GMatrix& objectToWorld);

}  // namespace velinor
