#include "tools/sky/dds_reader.h"

#include <algorithm>
#include <cstdint>

#include "tools/sky/dxt1.h"

namespace velinor {
namespace {

constexpr std::size_t kHeaderSize = 128;

std::uint32_t wordAt(std::string_view file, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < 4; ++i)
        word |= static_cast<std::uint32_t>(static_cast<unsigned char>(file[offset + i])) << 8 * i;
    return word;
}

std::size_t bytesOf(int size) {
    const auto blocks = static_cast<std::size_t>(std::max(1, size / 4));
    return blocks * blocks * 8;
}

void readFace(CubeLevel& level, int face, std::string_view blocks) {
    const int across = std::max(1, level.size() / 4);
    for (int number = 0; number < across * across; ++number) {
        Dxt1Block block;
        std::ranges::copy(blocks.substr(static_cast<std::size_t>(number) * block.size(), block.size()),
                          block.begin());
        const TexelBlock texels = decodeDxt1(block);
        for (int i = 0; i < 16; ++i) {
            const int x = number % across * 4 + i % 4;
            const int y = number / across * 4 + i / 4;
            if (x < level.size() && y < level.size())
                level.at(face, x, y) = texels[static_cast<std::size_t>(i)];
        }
    }
}

}  // namespace

std::optional<std::vector<CubeLevel>> readDds(std::string_view file) {
    if (file.size() < kHeaderSize || !file.starts_with("DDS ") || file.substr(84, 4) != "DXT1")
        return std::nullopt;
    const std::uint32_t size = wordAt(file, 12);
    if (size != wordAt(file, 16) || size == 0 || size > 4096 || (size & (size - 1)) != 0) return std::nullopt;
    std::vector<CubeLevel> levels;
    std::size_t faceBytes = 0;
    for (int edge = static_cast<int>(size); edge > 0; edge /= 2) {
        levels.emplace_back(edge);
        faceBytes += bytesOf(edge);
    }
    if (wordAt(file, 28) != levels.size() || file.size() != kHeaderSize + kCubeFaces * faceBytes)
        return std::nullopt;
    std::size_t offset = kHeaderSize;
    for (int face = 0; face < kCubeFaces; ++face) {
        for (CubeLevel& level : levels) {
            readFace(level, face, file.substr(offset, bytesOf(level.size())));
            offset += bytesOf(level.size());
        }
    }
    return levels;
}

}  // namespace velinor
