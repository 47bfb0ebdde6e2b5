#include "tools/sky/cube_map.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

void expectDirection(const Direction& found, const Direction& expected) {
    EXPECT_DOUBLE_EQ(found.x, expected.x);
    EXPECT_DOUBLE_EQ(found.y, expected.y);
    EXPECT_DOUBLE_EQ(found.z, expected.z);
}

TEST(CubeMap, ShowsEachFaceUprightAndNotMirrored) {
    struct Case {
        const char* face;
        Direction middle;
        Direction towardsRight;
        Direction towardsTop;
    };
    const Case cases[kCubeFaces] = {
        {"+X", {1, 0, 0}, {0, 0, 1}, {0, 1, 0}},  {"-X", {-1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
        {"+Y", {0, 1, 0}, {1, 0, 0}, {0, 0, 1}},  {"-Y", {0, -1, 0}, {1, 0, 0}, {0, 0, -1}},
        {"+Z", {0, 0, -1}, {1, 0, 0}, {0, 1, 0}}, {"-Z", {0, 0, 1}, {-1, 0, 0}, {0, 1, 0}},
    };
    for (int face = 0; face < kCubeFaces; ++face) {
        SCOPED_TRACE(cases[face].face);
        const Direction& middle = cases[face].middle;
        expectDirection(directionAt({face, 0, 0}), middle);
        expectDirection(directionAt({face, 1, 0}), middle + cases[face].towardsRight);
        expectDirection(directionAt({face, 0, -1}), middle + cases[face].towardsTop);
    }
}

TEST(CubeMap, FindsThePlaceOfEachDirection) {
    for (int face = 0; face < kCubeFaces; ++face) {
        for (const double s : {-0.9, 0.0, 0.4}) {
            for (const double t : {-0.7, 0.0, 0.95}) {
                const CubePlace place = placeOf(3.5 * directionAt({face, s, t}));
                EXPECT_EQ(place.face, face);
                EXPECT_DOUBLE_EQ(place.s, s);
                EXPECT_DOUBLE_EQ(place.t, t);
            }
        }
    }
}

}  // namespace
}  // namespace velinor
