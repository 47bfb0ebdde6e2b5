// The look of the default sky: a clear, mild afternoon over open ground.
#pragma once

#include "tools/sky/direction.h"

namespace velinor {

// Where the sun's centre stands; length 1. In a host's axes (Z up) it is (0.36, -0.8, 0.48): 28.7 degrees
// above the horizon, behind the right shoulder of someone who looks along host +Y.
inline constexpr Direction kSunDirection{0.36, 0.48, 0.8};

// The light from `direction`, which has length 1: linear, each part from 0 to 1. It has no edges anywhere.
// The same bits on every machine: nothing but +, -, *, / and sqrt is used.
Rgb skyColour(const Direction& direction);

}  // namespace velinor
