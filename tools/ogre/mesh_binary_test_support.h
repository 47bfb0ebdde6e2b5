// Binary meshes made in code, whole or damaged, for tests.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace velinor {

// The bytes of numbers as they lie in memory, which is little-endian here.
template <typename... Numbers>
std::string bytesOf(Numbers... numbers) {
    std::string bytes;
    const auto append = [&bytes](const auto& number) {
        std::array<char, sizeof number> raw{};
        std::memcpy(raw.data(), &number, sizeof number);
        bytes.append(raw.data(), raw.size());
    };
    (append(numbers), ...);
    return bytes;
}

struct TestSubmesh {
    std::string material;
    std::vector<std::uint32_t> indices;
};

// A mesh of positions alone. The default is a square in the plane y = 0, half "Wood" and half "Metal".
struct TestMesh {
    std::string version = "[MeshSerializer_v1.100]";
    std::vector<std::array<float, 3>> positions{{-1, 0, -2}, {1, 0, -2}, {1, 0, 2}, {-1, 0, 2}};
    std::vector<TestSubmesh> submeshes{{"Wood", {0, 2, 1}}, {"Metal", {0, 3, 2}}};
    std::optional<std::array<float, 7>> bounds{{-1, 0, -2, 1, 0, 2, 2.236068F}};
    std::uint16_t operation = 4;  // a list of triangles
    bool isWide = true;

    std::string bytes() const {
        std::string content = bytesOf(std::uint8_t{0}) + chunk(0x5000, geometry());
        for (const TestSubmesh& submesh : submeshes)
            content += chunk(0x4000, contentOf(submesh));
        if (bounds) {
            std::string numbers;
            for (const float number : *bounds)
                numbers += bytesOf(number);
            content += chunk(0x9000, numbers);
        }
        content += chunk(0xA000, chunk(0xA100, bytesOf(std::uint16_t{0}) + "Wood\n"));
        return bytesOf(std::uint16_t{0x1000}) + version + "\n" + chunk(0x3000, content);
    }

    static std::string chunk(std::uint16_t id, const std::string& content) {
        return bytesOf(id, static_cast<std::uint32_t>(content.size() + 6)) + content;
    }

  private:
    std::string geometry() const {
        const std::uint16_t zero = 0;
        const std::string position = bytesOf(zero, std::uint16_t{2}, std::uint16_t{1}, zero, zero);
        std::string vertices;
        for (const auto& [x, y, z] : positions)
            vertices += bytesOf(x, y, z);
        return bytesOf(static_cast<std::uint32_t>(positions.size())) +
               chunk(0x5100, chunk(0x5110, position)) +
               chunk(0x5200, bytesOf(zero, std::uint16_t{12}) + chunk(0x5210, vertices));
    }

    std::string contentOf(const TestSubmesh& submesh) const {
        std::string content = submesh.material + "\n" +
                              bytesOf(std::uint8_t{1}, static_cast<std::uint32_t>(submesh.indices.size()),
                                      static_cast<std::uint8_t>(isWide ? 1 : 0));
        for (const std::uint32_t index : submesh.indices)
            content += isWide ? bytesOf(index) : bytesOf(static_cast<std::uint16_t>(index));
        return content + chunk(0x4010, bytesOf(operation));
    }
};

}  // namespace velinor
