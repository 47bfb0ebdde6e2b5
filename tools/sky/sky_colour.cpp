#include "tools/sky/sky_colour.h"

#include <algorithm>

#include "tools/sky/value_noise.h"

namespace velinor {
namespace {

constexpr Rgb kZenith{0.105, 0.235, 0.520};
constexpr Rgb kMidSky{0.270, 0.455, 0.730};
constexpr Rgb kHorizon{0.700, 0.775, 0.830};
constexpr Rgb kHaze{0.520, 0.540, 0.530};  // the far ground
constexpr Rgb kGround{0.185, 0.180, 0.160};
constexpr Rgb kNadir{0.135, 0.130, 0.115};
constexpr Rgb kSun{1.0, 0.975, 0.92};
constexpr Rgb kCloud{0.900, 0.915, 0.940};

// 0 below `from`, 1 above `to`, smooth between.
double smoothStep(double from, double to, double x) {
    const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

// The clear sky at `height`, the sine of the angle above the horizon: pale low down, deep blue above.
Rgb clearSky(double height) {
    const double away = 1 - height;
    const double away2 = away * away;
    const double away4 = away2 * away2;
    return mix(mix(kZenith, kMidSky, away2), kHorizon, away4 * away4);
}

// The ground at `depth`, the sine of the angle below the horizon. It fades into the haze far away.
Rgb ground(double depth) {
    const double nearness = 1 + 11 * depth;
    return mix(mix(kNadir, kGround, 1 - depth), kHaze, 1 / (nearness * nearness));
}

// How much a veil of high, thin clouds covers, 0 to 1. The clouds lie on a flat layer; their texture is drawn
// out along one axis, as wind does, and fades where the layer is seen from the side.
double cloudCover(const Direction& direction) {
    const double height = std::max(direction.y, 0.0);
    const double scale = 1.5 / (height + 0.24);
    const double along = scale * (0.80 * direction.x + 0.60 * direction.z);
    const double across = scale * (0.80 * direction.z - 0.60 * direction.x);
    const double noise = fractalNoise(0.75 * along + 11.3, 1.35 * across + 4.7);
    return smoothStep(0.42, 0.86, noise) * smoothStep(0.05, 0.36, height);
}

// The glow around the sun, without the disc: wide and faint, and a narrow one on top. 0 to 1.
double sunGlow(double offSun) {
    return 0.22 / (1 + 9 * offSun) + 0.60 / (1 + 300 * offSun);
}

// The disc: a radius of about 1.5 degrees, larger than nature's, so that it takes some texels of a face.
double sunDisc(double offSun) {
    return 1 - smoothStep(1.0e-4, 8.0e-4, offSun);
}

Rgb sky(const Direction& direction) {
    const double offSun = std::max(1 - dot(direction, kSunDirection), 0.0);
    const Rgb veiled = mix(clearSky(direction.y), kCloud, 0.62 * cloudCover(direction));
    const Rgb lit = mix(veiled, kSun, std::min(sunGlow(offSun), 1.0));
    return mix(lit, {1, 1, 1}, sunDisc(offSun));
}

}  // namespace

Rgb skyColour(const Direction& direction) {
    constexpr double kHorizonWidth = 0.018;  // half of it, as a sine: the horizon is soft
    const double skyPart = smoothStep(-kHorizonWidth, kHorizonWidth, direction.y);
    if (skyPart == 0) return ground(-direction.y);
    const Direction above{direction.x, std::max(direction.y, 0.0), direction.z};
    if (skyPart == 1) return sky(above);
    return mix(ground(std::max(-direction.y, 0.0)), sky(above), skyPart);
}

}  // namespace velinor
