// The vertices of one mesh: the corners of its faces, each different one once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "host/geometry.h"

namespace velinor {

// One texture coordinate as it is written.
struct TexCoord {
    float u = 0;
    float v = 0;

    bool operator==(const TexCoord&) const = default;
};

// One vertex, in the package's axes. A view of a vertex list, or of what is about to be put into one.
struct MeshVertex {
    host::Point3 position;
    host::Point3 normal;
    std::span<const TexCoord> texCoords;
};

// An ordered list of vertices that all have the same number of texture coordinates. It grows by blocks, so a
// vertex stays where it is and growing needs no second copy of the list.
class VertexList {
  public:
    explicit VertexList(std::size_t texCoordsPerVertex)
        : texCoordsPerVertex_(texCoordsPerVertex),
          stride_(sizeof(Record) + texCoordsPerVertex * sizeof(TexCoord)) {}

    std::uint32_t size() const { return size_; }

    MeshVertex operator[](std::uint32_t index) const {
        const std::byte* record = recordAt(index);
        const auto* head = reinterpret_cast<const Record*>(record);
        return {head->position,
                head->normal,
                {reinterpret_cast<const TexCoord*>(record + sizeof(Record)), texCoordsPerVertex_}};
    }

    // Appends a copy of `vertex`, which has the list's number of texture coordinates, and returns its index.
    std::uint32_t append(const MeshVertex& vertex);

    // Tells the processor that this vertex is about to be read.
    void prefetch(std::uint32_t index) const { __builtin_prefetch(recordAt(index)); }

  private:
    struct Record {
        host::Point3 position;
        host::Point3 normal;
    };
    static constexpr std::uint32_t kBlockBits = 14;
    static constexpr std::uint32_t kBlockSize = 1U << kBlockBits;

    const std::byte* recordAt(std::uint32_t index) const {
        return blocks_[index >> kBlockBits].get() + (index & (kBlockSize - 1)) * stride_;
    }

    std::size_t texCoordsPerVertex_;
    std::size_t stride_;
    std::uint32_t size_ = 0;
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
};

}  // namespace velinor
