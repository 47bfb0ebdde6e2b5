#include "geometry/vertex_list.h"

#include <algorithm>
#include <new>

namespace velinor {

std::uint32_t VertexList::append(const MeshVertex& vertex) {
    const std::uint32_t place = size_ & (kBlockSize - 1);
    if (place == 0) blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(kBlockSize * stride_));
    std::byte* record = blocks_.back().get() + place * stride_;
    ::new (record) Record{vertex.position, vertex.normal};
    std::uninitialized_copy(vertex.texCoords.begin(), vertex.texCoords.end(),
                            reinterpret_cast<TexCoord*>(record + sizeof(Record)));
    return size_++;
}

}  // namespace velinor
