// Colours compared in tests.
#pragma once

#include <algorithm>
#include <cmath>

#include "tools/sky/direction.h"

namespace velinor {

// The largest difference of a channel.
inline double colourDistance(const Rgb& a, const Rgb& b) {
    return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
}

}  // namespace velinor
