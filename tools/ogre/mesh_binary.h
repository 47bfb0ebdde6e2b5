// Reads the binary mesh format of OGRE 1.10 and later, strictly: nothing is guessed and nothing skipped over.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/ogre/byte_cursor.h"

namespace velinor {

struct MeshBounds {
    std::array<float, 3> min{};
    std::array<float, 3> max{};

    bool operator==(const MeshBounds&) const = default;
};

// The triangles of one material. Views are into the bytes that were read.
struct MeshBinarySubmesh {
    std::string_view material;
    bool isWide = false;       // 32-bit indices, else 16-bit
    std::string_view indices;  // three a triangle
    bool isTriangleList = true;
    bool hasOwnVertices = false;

    std::uint64_t indexCount() const { return indices.size() / (isWide ? 4 : 2); }
    std::uint32_t index(std::uint64_t at) const;
};

// A mesh file as it stands, with one vertex list for all submeshes. Package space, scene units.
struct MeshBinary {
    std::uint32_t vertexCount = 0;
    std::string_view vertices;         // vertexCount times stride bytes
    std::uint16_t stride = 0;          // bytes from one vertex to the next
    std::uint16_t positionOffset = 0;  // where in a vertex its position is: three 32-bit floats
    bool hasPositions = false;
    std::optional<MeshBounds> bounds;  // as the file states them
    float radius = 0;                  // of the sphere around the origin, as the file states it
    std::vector<MeshBinarySubmesh> submeshes;

    std::array<float, 3> position(std::uint32_t vertex) const;
};

// Reads the bytes of a whole file. They must outlive the result. Throws ByteFault where they break the form,
// and where they use parts of the format that packages do not have: skeletons, vertices of single submeshes,
// other versions.
MeshBinary readMeshBinary(std::string_view bytes);

// The bounds of the positions; nothing without vertices.
std::optional<MeshBounds> boundsOfPositions(const MeshBinary& mesh);

// What is wrong with a mesh that has the right form: indices that lead nowhere, bounds that do not fit, names
// and triangles that are missing. One text for each kind of fault and submesh.
std::vector<std::string> meshFaults(const MeshBinary& mesh);

}  // namespace velinor
