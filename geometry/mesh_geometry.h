// A mesh taken apart into what is written: one list of vertices, and the faces of each submesh.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "base/progress.h"
#include "geometry/mesh_materials.h"
#include "geometry/vertex_list.h"
#include "host/mesh.h"

namespace velinor {

// One triangle: vertices of the list, in the host's order of corners.
struct MeshFace {
    std::array<std::uint32_t, 3> indices{};
};

// Where the texture coordinates of a vertex come from: one map channel each, in ascending order. Channels
// that are written and hold nothing have the same (0, 0) everywhere and are kept nowhere.
struct TexCoordLayout {
    static constexpr int kZero = -1;
    std::vector<int> written;  // for each coordinate that is written its place among `stored`, or kZero
    std::vector<int> stored;   // the map channels that hold something
};

struct MeshGeometry {
    TexCoordLayout texCoordLayout;
    VertexList vertexList;
    std::vector<MeshFace> faces;  // by the host's face number
    std::map<std::int32_t, std::vector<std::uint32_t>>
        submeshFaces;  // face numbers by submesh, both ascending
};

// The map channels of `mesh` that are written: channel 1 where it has vertices or there are channels beyond
// channel 0, and all others.
TexCoordLayout texCoordLayoutOf(const host::Mesh& mesh);

// Welds the corners of `mesh`, whose normals are built, in the order of the faces. Positions and normals come
// out in the package's axes, texture coordinates with v pointing down. Each face is a step of `progress`.
MeshGeometry weldMesh(const host::Mesh& mesh, const MeshMaterials& materials, StepProgress& progress);

}  // namespace velinor
