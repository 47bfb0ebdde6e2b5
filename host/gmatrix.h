// The host's 4x4 matrix: row vectors, translation in the fourth row.
#pragma once

#include <array>

#include "host/geometry.h"

namespace velinor::host {

// A 4x4 matrix of 32-bit floats for row vectors: a point (x, y, z, 1) is multiplied on the left, so products
// chain left to right (objectToParent * parentToWorld = objectToWorld) and the fourth row is the translation.
// A fresh one is the identity.
class GMatrix {
  public:
    using Row = std::array<float, 4>;

    GMatrix() : rows_{Row{1, 0, 0, 0}, Row{0, 1, 0, 0}, Row{0, 0, 1, 0}, Row{0, 0, 0, 1}} {}
    GMatrix(const Row& row0, const Row& row1, const Row& row2, const Row& row3)
        : rows_{row0, row1, row2, row3} {}

    const Row& operator[](int row) const { return rows_[static_cast<std::size_t>(row)]; }
    Row& operator[](int row) { return rows_[static_cast<std::size_t>(row)]; }

    // The inverse, computed in double precision and rounded once. Where the upper 3x3 part cannot be
    // inverted, its Moore-Penrose pseudo-inverse stands in: a point that the matrix maps to q comes back to
    // one that it maps to q, so a child below a node that is flat along an axis keeps its place. Not-finite
    // entries give a not-finite result.
    GMatrix Inverse() const;

    Point3 Translation() const { return {rows_[3][0], rows_[3][1], rows_[3][2]}; }

    // The rotation R of the polar decomposition M = S * R (S symmetric) of the upper 3x3 part, as a
    // left-handed quaternion of length 1. With a negative determinant -M is decomposed. A singular part
    // yields a proper rotation that it is compatible with; not-finite entries yield the identity. Its sign: w
    // is positive where the trace of R is positive, otherwise the component of the largest diagonal entry.
    Quat Rotation() const;

    // The diagonal of S of the same decomposition, negated where the determinant is negative.
    Point3 Scaling() const;

    // Rotation and scaling at the price of one, with what IsMirrored and IsSingular would say.
    struct Parts {
        Quat rotation;
        Point3 scaling;
        bool isMirrored = false;
        bool isSingular = false;
    };
    Parts Decompose() const;

    // Whether the upper 3x3 part is finite and flattens space to a plane, a line or a point, 32-bit noise
    // apart.
    bool IsSingular() const;

    // Whether it is finite, not singular and turns left-handed into right-handed.
    bool IsMirrored() const;

    bool IsFinite() const;

    bool operator==(const GMatrix&) const = default;

  private:
    std::array<Row, 4> rows_;
};

// The matrix product, each entry the sum of its four products from left to right in 32-bit floats.
GMatrix operator*(const GMatrix& a, const GMatrix& b);

// The left-handed quaternion of a rotation matrix's upper 3x3 part: what the usual column-vector formula
// gives for the rows as they stand.
Quat QuatFromRotationMatrix(const GMatrix& rotation);

// The rotation matrix of a left-handed unit quaternion.
GMatrix RotationMatrixFromQuat(const Quat& q);

}  // namespace velinor::host
