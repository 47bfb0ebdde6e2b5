// Reads back what dds_file.h writes: for looking at the sky, and for tests.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "tools/sky/cube_levels.h"

namespace velinor {

// The levels of a DXT1 cube map with all its mipmaps, texels as they stand in the file (sRGB, 0 to 255).
// Nothing where `file` is none or its length is not the one that its header asks for.
std::optional<std::vector<CubeLevel>> readDds(std::string_view file);

}  // namespace velinor
