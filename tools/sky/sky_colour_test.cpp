#include "tools/sky/sky_colour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tools/sky/value_noise.h"

namespace velinor {
namespace {

double brightness(const Direction& direction) {
    const Rgb colour = skyColour(normalised(direction));
    return (colour[0] + colour[1] + colour[2]) / 3;
}

// Directions all over the sphere, on a spiral from the top to the bottom.
template <typename Visit>
void forEachDirection(int count, const Visit& visit) {
    for (int i = 0; i < count; ++i) {
        const double y = 1 - (2.0 * i + 1) / count;
        const double radius = std::sqrt(1 - y * y);
        visit(Direction{radius * std::cos(2.4 * i), y, radius * std::sin(2.4 * i)});
    }
}

TEST(SkyColour, StaysInRange) {
    forEachDirection(20000, [](const Direction& direction) {
        for (const double part : skyColour(direction)) {
            EXPECT_GE(part, 0.05);
            EXPECT_LE(part, 1);
        }
    });
}

TEST(SkyColour, IsBrightestAtTheSun) {
    EXPECT_EQ(dot(kSunDirection, kSunDirection), 1);
    EXPECT_GT(brightness(kSunDirection), 0.999);
    forEachDirection(20000, [](const Direction& direction) {
        if (dot(direction, kSunDirection) < 0.99) {
            EXPECT_LT(brightness(direction), 0.93);
        }
    });
}

TEST(SkyColour, IsBlueAboveAndGroundBelow) {
    forEachDirection(5000, [](const Direction& direction) {
        const Rgb colour = skyColour(direction);
        if (direction.y > 0.5 && dot(direction, kSunDirection) < 0.9) {
            EXPECT_GT(colour[2], colour[0]);
            EXPECT_GT(colour[2], colour[1]);
        }
        if (direction.y < -0.3) {
            EXPECT_LT(colour[2], colour[0]);  // warm
            EXPECT_LT(brightness(direction), 0.3);
        }
    });
    EXPECT_GT(brightness({0, 1, 0}), 1.5 * brightness({0, -1, 0}));
}

TEST(SkyColour, HasNoEdges) {
    // Where the colour falls off most, at the horizon and the sun, a step of 0.03 degrees changes it by less
    // than this.
    forEachDirection(20000, [](const Direction& direction) {
        const Rgb here = skyColour(direction);
        for (const Direction& step : {Direction{5e-4, 0, 0}, Direction{0, 5e-4, 0}, Direction{0, 0, 5e-4}}) {
            const Rgb there = skyColour(normalised(direction + step));
            for (std::size_t channel = 0; channel < 3; ++channel)
                EXPECT_LT(std::abs(here[channel] - there[channel]), 0.03);
        }
    });
}

TEST(ValueNoise, IsSmoothAndNeitherBlackNorWhite) {
    double sum = 0;
    for (int i = 0; i < 10000; ++i) {
        const double x = 0.37 * (i % 100) - 20;
        const double y = 0.41 * (i / 100) - 20;
        const double noise = fractalNoise(x, y);
        EXPECT_GE(noise, 0);
        EXPECT_LE(noise, 1);
        EXPECT_NEAR(fractalNoise(x + 1e-6, y - 1e-6), noise, 1e-4);
        sum += noise;
    }
    EXPECT_NEAR(sum / 10000, 0.5, 0.05);
}

}  // namespace
}  // namespace velinor
