// Reads collision meshes: the Wavefront OBJ files (".mesh_phy.obj") of a package.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace velinor {

// What a collision mesh holds.
struct CollisionMesh {
    std::uint64_t points = 0;
    std::uint64_t faces = 0;
};

// What is wrong with a collision mesh; what() says where and what.
class CollisionMeshError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The collision mesh in the file content `text`: points of three finite numbers, and at least one face of
// three or more of the points above it. Normals, texture coordinates, groups, materials and comments are
// passed over. Throws CollisionMeshError otherwise. Takes linear time and no memory.
CollisionMesh readCollisionMesh(std::string_view text);

}  // namespace velinor
