#include "tools/sky/cube_map.h"

namespace velinor {
namespace {

struct FaceAxes {
    Direction forward;
    Direction right;
    Direction down;
};

constexpr FaceAxes kAxes[kCubeFaces] = {
    {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}},  {{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}},
    {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}},  {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
    {{0, 0, -1}, {1, 0, 0}, {0, -1, 0}}, {{0, 0, 1}, {-1, 0, 0}, {0, -1, 0}},
};

}  // namespace

Direction directionAt(const CubePlace& place) {
    const FaceAxes& axes = kAxes[place.face];
    return axes.forward + place.s * axes.right + place.t * axes.down;
}

CubePlace placeOf(const Direction& direction) {
    int face = 0;
    for (int other = 1; other < kCubeFaces; ++other) {
        if (dot(direction, kAxes[other].forward) > dot(direction, kAxes[face].forward)) face = other;
    }
    const double depth = dot(direction, kAxes[face].forward);
    return {face, dot(direction, kAxes[face].right) / depth, dot(direction, kAxes[face].down) / depth};
}

}  // namespace velinor
