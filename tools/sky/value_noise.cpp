#include "tools/sky/value_noise.h"

#include <cmath>
#include <cstdint>

namespace velinor {
namespace {

// A number from 0 to 1 for a point of the grid, as good as random.
double gridValue(std::int64_t x, std::int64_t y) {
    auto bits = static_cast<std::uint32_t>(x) * 0x9E3779B1U ^ static_cast<std::uint32_t>(y) * 0x85EBCA77U;
    bits = (bits ^ bits >> 15) * 0x2C1B3C6DU;
    bits = (bits ^ bits >> 12) * 0x297A2D39U;
    return (bits ^ bits >> 15) / 4294967295.0;
}

// 0 to 1 with slope and curvature 0 at both ends, so that the grid does not show.
double fade(double t) {
    return t * t * t * (t * (t * 6 - 15) + 10);
}

double lerp(double a, double b, double part) {
    return a + part * (b - a);
}

double valueNoise(double x, double y) {
    const double left = std::floor(x);
    const double top = std::floor(y);
    const auto i = static_cast<std::int64_t>(left);
    const auto j = static_cast<std::int64_t>(top);
    const double u = fade(x - left);
    return lerp(lerp(gridValue(i, j), gridValue(i + 1, j), u),
                lerp(gridValue(i, j + 1), gridValue(i + 1, j + 1), u), fade(y - top));
}

}  // namespace

double fractalNoise(double x, double y) {
    double sum = 0;
    double weight = 0.5;
    double total = 0;
    for (int octave = 0; octave < 5; ++octave) {
        sum += weight * valueNoise(x, y);
        total += weight;
        weight *= 0.5;
        // Twice as fine, turned and moved, so that the grids of the octaves do not meet.
        const double turned = 1.6 * x + 1.2 * y + 17.7;
        y = 1.6 * y - 1.2 * x + 5.3;
        x = turned;
    }
    return sum / total;
}

}  // namespace velinor
