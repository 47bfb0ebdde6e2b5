// Finds the one vertex for each corner of a mesh.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "geometry/vertex_list.h"

namespace velinor {

// Collects the corners of a mesh into a vertex list in which each vertex occurs once. The result is that of a
// walk, in the order of insertion, over all vertices of the corner's weld key that takes the first one that
// is the same (geometry/weld_rule.h), in constant time a corner.
class VertexWelder {
  public:
    // For vertices with that many texture coordinates. `expectedVertices` is only a hint.
    VertexWelder(std::size_t texCoordsPerVertex, std::size_t expectedVertices);
    ~VertexWelder();
    VertexWelder(const VertexWelder&) = delete;
    VertexWelder& operator=(const VertexWelder&) = delete;

    // The index of the vertex for this corner; a new one is appended to the list.
    std::uint32_t weld(const MeshVertex& corner);

    const VertexList& vertexList() const { return vertexList_; }

    // Gives the list away; the welder is of no further use.
    VertexList takeVertexList() { return std::move(vertexList_); }

  private:
    class NotFinite;

    // A place in the table of cells.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t vertex = kNone;
    };
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    std::uint32_t weldFinite(const MeshVertex& corner);
    std::uint32_t weldNotFinite(const MeshVertex& corner);
    std::uint32_t findInNeighbours(const MeshVertex& corner, std::uint64_t texCoordHash) const;
    std::uint32_t firstSameInCell(const MeshVertex& corner, std::uint32_t hash) const;
    void insert(std::uint32_t hash, std::uint32_t vertex);
    void grow();

    VertexList vertexList_;
    std::vector<Slot> slots_;  // a power of two of them, at most half in use
    std::size_t used_ = 0;
    std::unique_ptr<NotFinite> notFinite_;  // made with the first such vertex
};

}  // namespace velinor
