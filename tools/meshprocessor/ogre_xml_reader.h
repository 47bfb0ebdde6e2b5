// Reads the triangles of an Ogre XML mesh.
#pragma once

#include <filesystem>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// The points of the shared geometry and the faces of all submeshes of `file`, in the file's order. Every
// number is finite and every index is in range. What collision shapes do not need (normals, texture
// coordinates, names) is skipped. The file is read front to back in pieces: memory holds the mesh and not the
// text. Throws MeshError with file, line and column where the file cannot be read or is not such a mesh.
TriangleMesh readOgreXml(const std::filesystem::path& file);

}  // namespace velinor
