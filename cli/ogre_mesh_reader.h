// Reads binary OGRE meshes (".mesh"), strictly: everything that a loader would take on trust is verified.
#pragma once

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// One submesh: triangles of one material.
struct OgreSubmesh {
    std::string material;
    std::uint32_t triangles = 0;
};

// What a mesh file holds, without its vertices.
struct OgreMesh {
    std::uint64_t vertices = 0;  // shared ones and those of the submeshes
    std::vector<OgreSubmesh> submeshes;
    std::array<float, 3> minimum{};  // of all positions; package space, scene units
    std::array<float, 3> maximum{};
};

// What is wrong with a mesh; what() says where and what.
class OgreMeshError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The mesh in the file content `bytes`. Besides the form it is verified that every submesh is a list of at
// least one triangle with a material, that indices stay below the number of vertices, that positions are
// finite, and that the bounds are those of the positions. Throws OgreMeshError otherwise. Takes linear time,
// and next to no memory.
OgreMesh readOgreMesh(std::string_view bytes);

}  // namespace velinor
