#include "geometry/weld_rule.h"

#include <algorithm>
#include <cmath>

namespace velinor {
namespace {

// The low 32 bits of the coordinate in whole millionths.
std::uint32_t wholeMillionths(float coordinate) {
    constexpr double kBeyondInt64 = 0x1p63;
    const float product = coordinate * 1e6F;
    const double millionths = double{product} + 0.5;
    if (!(millionths > -kBeyondInt64 && millionths < kBeyondInt64))
        return 0;  // the smallest integer ends in zeros
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(millionths));
}

bool isNear(const host::Point3& a, const host::Point3& b) {
    const float difference = std::fabs(a.x - b.x) + std::fabs(a.y - b.y) + std::fabs(a.z - b.z);
    return !(double{difference} > kWeldTolerance);
}

}  // namespace

std::int32_t weldKey(const host::Point3& position) {
    return static_cast<std::int32_t>(wholeMillionths(position.z) + wholeMillionths(position.y) +
                                     wholeMillionths(position.x));
}

bool isSameVertex(const MeshVertex& a, const MeshVertex& b) {
    return isNear(a.position, b.position) && isNear(a.normal, b.normal) &&
           std::ranges::equal(a.texCoords, b.texCoords);
}

}  // namespace velinor
