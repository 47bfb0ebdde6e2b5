#include "tools/sky/cube_levels.h"

#include <gtest/gtest.h>

#include <utility>

#include "tools/sky/colour_test_support.h"

namespace velinor {
namespace {

// Light that differs in every direction.
Rgb towardsAxes(const Direction& direction) {
    return {0.5 + 0.5 * direction.x, 0.5 + 0.5 * direction.y, 0.5 + 0.5 * direction.z};
}

TEST(CubeLevels, HalveDownToOneTexel) {
    const auto levels = makeCubeLevels(16, towardsAxes);
    ASSERT_EQ(levels.size(), 5U);
    for (std::size_t i = 0; i < levels.size(); ++i)
        EXPECT_EQ(levels[i].size(), 16 >> i);
}

TEST(CubeLevels, ShowTheColourOfEachDirection) {
    const auto levels = makeCubeLevels(32, towardsAxes);
    for (int face = 0; face < kCubeFaces; ++face) {
        for (const int row : {0, 9, 31}) {
            for (const int column : {0, 20, 31}) {
                const Direction direction =
                    normalised(directionAt({face, levels[0].centre(column), levels[0].centre(row)}));
                EXPECT_LT(colourDistance(levels[0].at(face, column, row), towardsAxes(direction)), 1e-3);
                EXPECT_EQ(&levels[0].towards(direction), &levels[0].at(face, column, row));
            }
        }
    }
}

TEST(CubeLevels, KeepOneColourAsItIs) {
    for (const CubeLevel& level : makeCubeLevels(8, [](const Direction&) { return Rgb{0.25, 0.5, 1}; })) {
        for (int face = 0; face < kCubeFaces; ++face)
            EXPECT_LT(colourDistance(level.at(face, level.size() - 1, 0), {0.25, 0.5, 1}), 1e-12);
    }
}

TEST(CubeLevels, EndInTheMeanOfTheWholeSphere) {
    // One half of the sphere is lit: in linear light the mean is 0.5.
    const auto half = [](const Direction& direction) { return direction.y > 0 ? Rgb{1, 1, 1} : Rgb{}; };
    const CubeLevel last = makeCubeLevels(16, half).back();
    for (int face = 0; face < kCubeFaces; ++face)
        EXPECT_LT(colourDistance(last.at(face, 0, 0), {0.5, 0.5, 0.5}), 1e-12);
}

TEST(CubeLevels, AgreeOnBothSidesOfEachEdge) {
    const auto levels = makeCubeLevels(16, towardsAxes);
    for (std::size_t number = 1; number < levels.size(); ++number) {
        const CubeLevel& level = levels[number];
        const int last = level.size() - 1;
        for (int face = 0; face < kCubeFaces; ++face) {
            for (int i = 0; i <= last; ++i) {
                const std::pair<int, int> inside[] = {{0, i}, {last, i}, {i, 0}, {i, last}};
                const std::pair<int, int> beyond[] = {{-1, i}, {last + 1, i}, {i, -1}, {i, last + 1}};
                for (int side = 0; side < 4; ++side) {
                    const Direction out = directionAt(
                        {face, level.centre(beyond[side].first), level.centre(beyond[side].second)});
                    ASSERT_NE(placeOf(out).face, face);
                    EXPECT_LT(colourDistance(level.at(face, inside[side].first, inside[side].second),
                                             level.towards(out)),
                              1e-12)
                        << "level " << number << ", face " << face << ", side " << side << ", texel " << i;
                }
            }
        }
    }
}

}  // namespace
}  // namespace velinor
