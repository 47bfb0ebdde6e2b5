// Points as vectors to calculate with.
#pragma once

#include <Eigen/Core>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

inline Eigen::Vector3f vectorOf(const Point& point) {
    return {point[0], point[1], point[2]};
}

// For sums and products in double precision.
inline Eigen::Vector3d preciseVectorOf(const Point& point) {
    return vectorOf(point).cast<double>();
}

}  // namespace velinor
