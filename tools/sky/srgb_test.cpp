#include "tools/sky/srgb.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velinor {
namespace {

TEST(Srgb, AgreesWithPowers) {
    for (int i = 0; i <= 1000; ++i) {
        const double light = i / 1000.0;
        const double encoded = light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
        EXPECT_NEAR(toSrgb(light), 255 * encoded, 1e-9) << light;
        const double decoded = light <= 0.04045 ? light / 12.92 : std::pow((light + 0.055) / 1.055, 2.4);
        EXPECT_NEAR(fromSrgb(255 * light), decoded, 1e-12) << light;
    }
}

TEST(Srgb, IsUndoneByTheWayBack) {
    for (int value = 0; value < 256; ++value)
        EXPECT_NEAR(toSrgb(fromSrgb(value)), value, 1e-9);
}

TEST(Srgb, ClampsWhatIsTooDarkOrTooBright) {
    EXPECT_EQ(toSrgb(-1), 0);
    EXPECT_NEAR(toSrgb(7), 255, 1e-9);
    EXPECT_EQ(fromSrgb(-1), 0);
    EXPECT_NEAR(fromSrgb(256), 1, 1e-12);
}

}  // namespace
}  // namespace velinor
