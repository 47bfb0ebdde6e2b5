#include "tools/sky/dds_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "tools/sky/dxt1.h"
#include "tools/sky/srgb.h"

namespace velinor {
namespace {

constexpr std::uint32_t kHasCapsHeightWidthFormat = 0x1007;
constexpr std::uint32_t kHasMipCount = 0x20000;
constexpr std::uint32_t kHasLinearSize = 0x80000;
constexpr std::uint32_t kFourLetterFormat = 0x4;
constexpr std::uint32_t kTextureComplexMipmap = 0x401008;
constexpr std::uint32_t kCubeMapAllFaces = 0xFE00;

constexpr std::uint32_t letters(std::string_view text) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << 8 * i;
    return value;
}

int blocksAcross(int size) {
    return std::max(1, size / 4);
}

std::array<std::uint32_t, 32> headerOf(int size, int levels) {
    std::array<std::uint32_t, 32> header{};  // by the offset in bytes / 4
    header[0] = letters("DDS ");
    header[1] = 124;
    header[2] = kHasCapsHeightWidthFormat | kHasMipCount | kHasLinearSize;
    header[3] = header[4] = static_cast<std::uint32_t>(size);  // height, width
    header[5] = static_cast<std::uint32_t>(blocksAcross(size) * blocksAcross(size) * 8);
    header[7] = static_cast<std::uint32_t>(levels);
    header[19] = 32;
    header[20] = kFourLetterFormat;
    header[21] = letters("DXT1");
    header[27] = kTextureComplexMipmap;
    header[28] = kCubeMapAllFaces;
    return header;
}

// The block in `column` and `row` of blocks. A level below 4 x 4 fills its block by repeating its last
// texels.
TexelBlock texelsOf(const CubeLevel& level, int face, int column, int row) {
    TexelBlock texels;
    for (int i = 0; i < 16; ++i) {
        const int x = std::min(4 * column + i % 4, level.size() - 1);
        const int y = std::min(4 * row + i / 4, level.size() - 1);
        const Rgb& light = level.at(face, x, y);
        texels[static_cast<std::size_t>(i)] = {toSrgb(light[0]), toSrgb(light[1]), toSrgb(light[2])};
    }
    return texels;
}

void appendFace(std::string& file, const CubeLevel& level, int face) {
    const int blocks = blocksAcross(level.size());
    for (int row = 0; row < blocks; ++row) {
        for (int column = 0; column < blocks; ++column) {
            const Dxt1Block block = encodeDxt1(texelsOf(level, face, column, row));
            file.append(block.begin(), block.end());
        }
    }
}

}  // namespace

std::string ddsFile(const std::vector<CubeLevel>& levels) {
    std::string file;
    for (const std::uint32_t word : headerOf(levels.front().size(), static_cast<int>(levels.size()))) {
        for (int shift = 0; shift < 32; shift += 8)
            file += static_cast<char>(word >> shift & 0xFF);
    }
    for (int face = 0; face < kCubeFaces; ++face) {
        for (const CubeLevel& level : levels)
            appendFace(file, level, face);
    }
    return file;
}

}  // namespace velinor
