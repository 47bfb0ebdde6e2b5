#include "tools/sky/srgb.h"

#include <algorithm>
#include <cmath>

namespace velinor {
namespace {

// The root of degree 3 or 5 of an x from 0.0001 to 1, by Newton's method from above. As many steps as x =
// 0.0001 needs to arrive, and some more.
template <int degree>
double root(double x) {
    double y = 1;
    for (int step = 0; step < 24; ++step) {
        double power = y;  // y to degree - 1
        for (int i = 2; i < degree; ++i)
            power *= y;
        y = ((degree - 1) * y + x / power) / degree;
    }
    return y;
}

}  // namespace

double toSrgb(double light) {
    light = std::clamp(light, 0.0, 1.0);
    if (light <= 0.0031308) return 255 * 12.92 * light;
    const double twelfthRoot = std::sqrt(std::sqrt(root<3>(light)));
    const double squared = twelfthRoot * twelfthRoot;
    return 255 * (1.055 * squared * squared * twelfthRoot - 0.055);  // to the power of 5/12, 1/2.4
}

double fromSrgb(double value) {
    value = std::clamp(value / 255, 0.0, 1.0);
    if (value <= 0.04045) return value / 12.92;
    const double base = (value + 0.055) / 1.055;
    const double fifthRoot = root<5>(base);
    return base * base * fifthRoot * fifthRoot;  // to the power of 12/5, 2.4
}

}  // namespace velinor
