// Directions and light of the sky.
#pragma once

#include <array>
#include <cmath>

namespace velinor {

// A direction in package space: right-handed, Y up. Any length but 0, unless a function says otherwise.
struct Direction {
    double x = 0;
    double y = 0;
    double z = 0;

    bool operator==(const Direction&) const = default;
};

constexpr Direction operator+(const Direction& a, const Direction& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Direction operator*(double factor, const Direction& a) {
    return {factor * a.x, factor * a.y, factor * a.z};
}
constexpr double dot(const Direction& a, const Direction& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Direction normalised(const Direction& a) {
    return (1 / std::sqrt(dot(a, a))) * a;
}

// Red, green, blue. What the numbers mean, and their range, is told where they are used.
using Rgb = std::array<double, 3>;

constexpr Rgb operator+(const Rgb& a, const Rgb& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
constexpr Rgb operator*(double factor, const Rgb& a) {
    return {factor * a[0], factor * a[1], factor * a[2]};
}
// `a` where `part` is 0, `b` where it is 1.
constexpr Rgb mix(const Rgb& a, const Rgb& b, double part) {
    return (1 - part) * a + part * b;
}

}  // namespace velinor
