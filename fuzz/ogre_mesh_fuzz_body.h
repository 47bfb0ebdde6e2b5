// What must hold for every file that is read as a mesh.
#pragma once

#include <cmath>
#include <cstdlib>
#include <string_view>

#include "cli/ogre_mesh_reader.h"

namespace velinor {

// Reads `bytes` as a mesh. It is refused with a message, or what was read is sound; ends the process
// otherwise.
inline void fuzzOgreMesh(std::string_view bytes) {
    const auto require = [](bool holds) {
        if (!holds) std::abort();
    };
    OgreMesh mesh;
    try {
        mesh = readOgreMesh(bytes);
    } catch (const OgreMeshError& error) {
        require(!std::string_view(error.what()).empty());
        return;
    }
    require(mesh.vertices > 0 && !mesh.submeshes.empty());
    std::size_t size = 0;
    for (const OgreSubmesh& submesh : mesh.submeshes) {
        require(!submesh.material.empty() && submesh.triangles > 0);
        size += submesh.material.size() + std::size_t{submesh.triangles} * 3 * 2;
    }
    require(size < bytes.size());
    for (std::size_t axis = 0; axis < 3; ++axis) {
        require(std::isfinite(mesh.minimum[axis]) && std::isfinite(mesh.maximum[axis]));
        require(mesh.minimum[axis] <= mesh.maximum[axis]);
    }
    // A sound mesh says how long it is: without its last byte it is none.
    try {
        readOgreMesh(bytes.substr(0, bytes.size() - 1));
        require(false);
    } catch (const OgreMeshError&) {
    }
}

}  // namespace velinor
