// The default sky as a file, and a picture of it.
#pragma once

#include <string>
#include <vector>

#include "tools/sky/cube_levels.h"

namespace velinor {

inline constexpr int kDefaultSkySize = 256;  // texels along an edge of a face

// The bytes of default.dds.
std::string defaultSkyFile();

// The faces of `level`, whose texels are 0 to 255, unfolded into a cross as a PPM picture: the face seen
// along -Z in the middle of a row of four, up and down above and below it.
std::string crossPicture(const CubeLevel& level);

}  // namespace velinor
