// Points, boxes and quaternions as a host gives them. All numbers are 32-bit floats in host space: Z-up,
// right-handed.
#pragma once

#include <algorithm>
#include <limits>
#include <ostream>

namespace velinor::host {

struct Point3 {
    float x = 0;
    float y = 0;
    float z = 0;

    bool operator==(const Point3&) const = default;
};

// `p` scaled to length 1; a zero vector stays zero.
Point3 Normalize(const Point3& p);

struct Point4 {
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 0;

    bool operator==(const Point4&) const = default;
};

// An axis-aligned box. A fresh one is empty: its minimum lies above its maximum.
struct Box3 {
    Point3 pmin{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
                std::numeric_limits<float>::max()};
    Point3 pmax{-std::numeric_limits<float>::max(), -std::numeric_limits<float>::max(),
                -std::numeric_limits<float>::max()};

    bool IsEmpty() const { return pmin.x > pmax.x || pmin.y > pmax.y || pmin.z > pmax.z; }

    // Grows the box to hold `p`. A coordinate that is not a number is passed over.
    void Include(const Point3& p) {
        pmin = {std::min(pmin.x, p.x), std::min(pmin.y, p.y), std::min(pmin.z, p.z)};
        pmax = {std::max(pmax.x, p.x), std::max(pmax.y, p.y), std::max(pmax.z, p.z)};
    }

    bool operator==(const Box3&) const = default;
};

// A quaternion by the host's left-hand rule: the conjugate of the usual right-handed quaternion of the same
// rotation. docs/coordinates.md, "Quaternions". A fresh one is the identity.
struct Quat {
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 1;

    // Scales to length 1, in place. The zero quaternion becomes the identity; one with an entry that is not
    // finite stays as it is.
    void Normalize();

    bool operator==(const Quat&) const = default;
};

// The Hamilton product in the order written. With left-handed quaternions and row-vector matrices it composes
// left to right, as the matrix product does: rot(A) * rot(B) = rot(A * B).
Quat operator*(const Quat& a, const Quat& b);

// The inverse of a unit quaternion: its conjugate.
Quat Conjugate(const Quat& q);

std::ostream& operator<<(std::ostream& out, const Point3& p);
std::ostream& operator<<(std::ostream& out, const Quat& q);

}  // namespace velinor::host
