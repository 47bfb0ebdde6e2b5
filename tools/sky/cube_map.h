// Which direction each texel of a cube map shows.
#pragma once

#include "tools/sky/direction.h"

namespace velinor {

// Faces in the order of a file. The names are those of the file format; what is seen there differs for the
// last two:
//
//   0 "+X"  looking along package +X            3 "-Y"  down, the top towards -Z
//   1 "-X"  along -X                            4 "+Z"  along -Z
//   2 "+Y"  up, the top towards +Z              5 "-Z"  along +Z
inline constexpr int kCubeFaces = 6;

// A place on a face, as someone inside the cube sees it.
struct CubePlace {
    int face = 0;
    double s = 0;  // -1 left to 1 right
    double t = 0;  // -1 top to 1 bottom
};

// The direction, not normalised, that stands at `place`; and the place that a direction falls on. Where faces
// meet, the first of them counts. A place beyond the edge of its face (|s| > 1) has a direction too.
Direction directionAt(const CubePlace& place);
CubePlace placeOf(const Direction& direction);

}  // namespace velinor
