// DDS files: cube maps in DXT1.
//
//   header, 128 bytes, u32 little-endian
//   for each face, in the order of cube_map.h: all levels from the largest to 1 x 1, each as DXT1 blocks,
//   rows of blocks from the top
#pragma once

#include <string>
#include <vector>

#include "tools/sky/cube_levels.h"

namespace velinor {

// The bytes of the file of a cube map; `levels` as makeCubeLevels gives them. Texels are sRGB.
std::string ddsFile(const std::vector<CubeLevel>& levels);

}  // namespace velinor
