// DDS files made in code, for tests.
#pragma once

#include <cstdint>
#include <string>

#include "tools/ogre/mesh_binary_test_support.h"

namespace velinor {

// A cube map of 32-bit pixels with all its levels. Each level of each face is of one colour.
inline std::string ddsCubeMap(std::uint32_t side, std::uint32_t faces = 0xFE00) {
    std::uint32_t levels = 0;
    std::string face;
    for (std::uint32_t n = side; n > 0; n /= 2, ++levels)
        face += std::string(std::size_t{n} * n * 4, '\x60');
    const std::uint32_t none = 0;
    std::string bytes =
        "DDS " + bytesOf(std::uint32_t{124}, std::uint32_t{0x0002100F}, side, side, 4 * side, none, levels);
    bytes += std::string(44, '\0');
    bytes +=
        bytesOf(std::uint32_t{32}, std::uint32_t{0x41}, none, std::uint32_t{32}, std::uint32_t{0x00FF0000},
                std::uint32_t{0x0000FF00}, std::uint32_t{0x000000FF}, std::uint32_t{0xFF000000});
    bytes += bytesOf(std::uint32_t{0x00401008}, faces, none, none, none);
    for (int i = 0; i < 6; ++i)
        bytes += face;
    return bytes;
}

}  // namespace velinor
