// Makes binary OGRE meshes for tests, intact ones and damaged ones.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace velinor {

inline std::string littleEndianBytes(std::uint32_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
    return bytes;
}

inline std::string meshChunk(std::uint16_t id, const std::string& content) {
    return littleEndianBytes(id, 2) + littleEndianBytes(static_cast<std::uint32_t>(content.size() + 6), 4) +
           content;
}

inline std::string floatBytes(const std::vector<float>& values) {
    std::string bytes;
    for (const float value : values)
        bytes += littleEndianBytes(std::bit_cast<std::uint32_t>(value), 4);
    return bytes;
}

// A mesh of one triangle. A test changes one thing and builds it.
struct TestMesh {
    std::string version = "[MeshSerializer_v1.100]";
    std::vector<float> positions{0, 0, 0, 1, 0, 0, 0, 2, 0};
    std::uint32_t vertices = 3;
    std::vector<std::uint16_t> element{0, 2, 1, 0, 0};  // buffer, type, meaning, offset, index
    std::uint16_t stride = 12;
    std::string material = "Brick";
    bool isShared = true;
    bool hasGeometry = true;
    std::vector<std::uint32_t> indices{0, 1, 2};
    bool isWide = true;
    std::uint16_t operation = 4;
    std::vector<float> bounds{0, 0, 0, 1, 2, 0, 2};
    std::string more;         // further chunks of the mesh
    std::string moreSubmesh;  // and of its submesh
    int submeshes = 1;

    std::string geometryChunk() const {
        std::string numbers;
        for (const std::uint16_t number : element)
            numbers += littleEndianBytes(number, 2);
        return meshChunk(0x5000,
                         littleEndianBytes(vertices, 4) + meshChunk(0x5100, meshChunk(0x5110, numbers)) +
                             meshChunk(0x5200, littleEndianBytes(0, 2) + littleEndianBytes(stride, 2) +
                                                   meshChunk(0x5210, floatBytes(positions))));
    }

    std::string submeshChunk() const {
        std::string content = material + "\n" + littleEndianBytes(isShared ? 1 : 0, 1) +
                              littleEndianBytes(static_cast<std::uint32_t>(indices.size()), 4) +
                              littleEndianBytes(isWide ? 1 : 0, 1);
        for (const std::uint32_t index : indices)
            content += littleEndianBytes(index, isWide ? 4 : 2);
        if (!isShared && hasGeometry) content += geometryChunk();
        return meshChunk(0x4000, content + moreSubmesh + meshChunk(0x4010, littleEndianBytes(operation, 2)));
    }

    std::string bytes() const {
        std::string content(1, '\0');
        if (isShared && hasGeometry) content += geometryChunk();
        for (int i = 0; i < submeshes; ++i)
            content += submeshChunk();
        if (!bounds.empty()) content += meshChunk(0x9000, floatBytes(bounds));
        content += meshChunk(0xA000, meshChunk(0xA100, littleEndianBytes(0, 2) + material + "\n"));
        return littleEndianBytes(0x1000, 2) + version + "\n" + meshChunk(0x3000, content + more);
    }
};

// TestMesh with one thing changed.
template <typename Change>
TestMesh changedMesh(const Change& change) {
    TestMesh mesh;
    change(mesh);
    return mesh;
}

}  // namespace velinor
