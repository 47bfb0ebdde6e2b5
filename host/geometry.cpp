#include "host/geometry.h"

#include <cmath>

namespace velinor::host {

Point3 Normalize(const Point3& p) {
    // In double, where no 32-bit float's square overflows or vanishes.
    const double length = std::sqrt(double{p.x} * p.x + double{p.y} * p.y + double{p.z} * p.z);
    if (length == 0) return p;
    return {static_cast<float>(p.x / length), static_cast<float>(p.y / length),
            static_cast<float>(p.z / length)};
}

void Quat::Normalize() {
    // In double, where no 32-bit float's square overflows or vanishes.
    const double length = std::sqrt(double{x} * x + double{y} * y + double{z} * z + double{w} * w);
    if (!std::isfinite(length)) return;
    if (length == 0) {
        *this = Quat{};
        return;
    }
    *this = {static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length),
             static_cast<float>(w / length)};
}

Quat operator*(const Quat& a, const Quat& b) {
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

Quat Conjugate(const Quat& q) {
    return {-q.x, -q.y, -q.z, q.w};
}

std::ostream& operator<<(std::ostream& out, const Point3& p) {
    return out << '(' << p.x << ", " << p.y << ", " << p.z << ')';
}

std::ostream& operator<<(std::ostream& out, const Quat& q) {
    return out << "(x " << q.x << ", y " << q.y << ", z " << q.z << ", w " << q.w << ')';
}

}  // namespace velinor::host
