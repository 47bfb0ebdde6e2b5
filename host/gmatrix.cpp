#include "host/gmatrix.h"

#include <Eigen/Dense>
#include <cmath>
#include <limits>
#include <optional>

namespace velinor::host {
namespace {

using Matrix3d = Eigen::Matrix3d;

// A determinant counts as zero below this part of the sum of its six products' magnitudes: so much is the
// rounding noise of 32-bit entries. The measure does not change with the lengths of rows and columns, so a
// scale may be as uneven as it likes.
constexpr double kDeterminantNoise = 1e-6;

Matrix3d upper3x3(const GMatrix& m) {
    Matrix3d upper;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            upper(row, column) = m[row][static_cast<std::size_t>(column)];
    }
    return upper;
}

// The transposed inverse times the determinant. Written out, because structural zeros must stay zeros.
Matrix3d cofactors(const Matrix3d& m) {
    Matrix3d c;
    c.row(0) = m.row(1).cross(m.row(2));
    c.row(1) = m.row(2).cross(m.row(0));
    c.row(2) = m.row(0).cross(m.row(1));
    return c;
}

double determinantOf(const Matrix3d& m) {
    return m.row(0).dot(m.row(1).cross(m.row(2)));
}

// Whether `m`, whose determinant is given, flattens space, noise apart.
bool isFlat(const Matrix3d& m, double determinant) {
    const Matrix3d size = m.cwiseAbs();
    const auto products = [&size](int a, int b, int c) { return size(0, a) * size(1, b) * size(2, c); };
    const double sum = products(0, 1, 2) + products(1, 2, 0) + products(2, 0, 1) + products(0, 2, 1) +
                       products(1, 0, 2) + products(2, 1, 0);
    return !(std::abs(determinant) > kDeterminantNoise * sum);
}

// The largest magnitude of an entry. Divided by it, squares and determinants keep away from the ends of the
// number range.
double sizeOf(const Matrix3d& m) {
    return m.cwiseAbs().maxCoeff();
}

// M = stretch * rotation.
struct Polar {
    Matrix3d rotation = Matrix3d::Identity();
    Matrix3d stretch = Matrix3d::Zero();
};

// For any matrix; of a singular one the rotation is proper.
Polar polarBySvd(const Matrix3d& m) {
    const Eigen::JacobiSVD<Matrix3d> svd(m, Eigen::ComputeFullU | Eigen::ComputeFullV);
    Matrix3d u = svd.matrixU();
    const Matrix3d stretch = u * svd.singularValues().asDiagonal() * u.transpose();
    // The direction that belongs to a singular value of zero is free: choose it so that no mirroring remains.
    if (determinantOf(u * svd.matrixV().transpose()) < 0) u.col(2) = -u.col(2);
    return {u * svd.matrixV().transpose(), stretch};
}

// Newton's iteration for the orthogonal polar factor (Higham, "Computing the polar decomposition with
// applications", 1986): R' = (R + R^-T) / 2, scaled in the first steps. It converges quadratically and,
// unlike a singular value decomposition, leaves the zeros of axis-aligned and planar rotations exact. Nothing
// where it does not converge.
std::optional<Polar> polarByNewton(const Matrix3d& m) {
    constexpr int kMaxSteps = 60;
    constexpr double kConverged = 1e-8;  // the error after a step is about the square of its change
    Matrix3d r = m;
    for (int step = 0; step < kMaxSteps; ++step) {
        const Matrix3d adjugate = cofactors(r);
        const double determinant = r.row(0).dot(adjugate.row(0));
        if (!std::isnormal(determinant)) return std::nullopt;
        const Matrix3d inverseTransposed = adjugate / determinant;
        const double before = r.squaredNorm();
        const double after = inverseTransposed.squaredNorm();
        // Far from orthogonal, scaling by the ratio of the norms saves most of the steps.
        const bool isFar = std::abs(before - 3) + std::abs(after - 3) > 1e-2;
        const double gamma = isFar ? std::sqrt(std::sqrt(after / before)) : 1.0;
        const Matrix3d next = 0.5 * (gamma * r + inverseTransposed / gamma);
        const double change = (next - r).cwiseAbs().maxCoeff();
        r = next;
        if (change <= kConverged) {
            const Matrix3d product = m * r.transpose();
            return Polar{r, 0.5 * (product + product.transpose())};
        }
    }
    return std::nullopt;
}

// The decomposition of `m`, which is finite, not mirrored and of ordinary size.
Polar polarOf(const Matrix3d& m, bool isSingular) {
    if (isSingular) return polarBySvd(m);
    const std::optional<Polar> polar = polarByNewton(m);
    return polar ? *polar : polarBySvd(m);
}

Quat quatOf(const Matrix3d& r) {
    // Shoemake, "Quaternions", 1994, for column vectors, applied to the rows as they stand.
    const double trace = r(0, 0) + r(1, 1) + r(2, 2);
    std::array<double, 3> xyz{};
    double w = 0;
    if (trace > 0) {
        const double root = std::sqrt(trace + 1.0);
        w = 0.5 * root;
        const double factor = 0.5 / root;
        xyz = {(r(2, 1) - r(1, 2)) * factor, (r(0, 2) - r(2, 0)) * factor, (r(1, 0) - r(0, 1)) * factor};
    } else {
        int i = r(1, 1) > r(0, 0) ? 1 : 0;
        if (r(2, 2) > r(i, i)) i = 2;
        const int j = (i + 1) % 3;
        const int k = (i + 2) % 3;
        const double root = std::sqrt(r(i, i) - r(j, j) - r(k, k) + 1.0);
        const double factor = 0.5 / root;
        xyz[static_cast<std::size_t>(i)] = 0.5 * root;
        xyz[static_cast<std::size_t>(j)] = (r(i, j) + r(j, i)) * factor;
        xyz[static_cast<std::size_t>(k)] = (r(k, i) + r(i, k)) * factor;
        w = (r(k, j) - r(j, k)) * factor;
    }
    return {static_cast<float>(xyz[0]), static_cast<float>(xyz[1]), static_cast<float>(xyz[2]),
            static_cast<float>(w)};
}

Matrix3d pseudoInverse(const Matrix3d& m) {
    const Eigen::JacobiSVD<Matrix3d> svd(m, Eigen::ComputeFullU | Eigen::ComputeFullV);
    Eigen::Vector3d reciprocals = svd.singularValues();
    const double noise = kDeterminantNoise * reciprocals(0);
    for (double& value : reciprocals)
        value = value > noise ? 1.0 / value : 0.0;
    return svd.matrixV() * reciprocals.asDiagonal() * svd.matrixU().transpose();
}

Matrix3d inverseOf(const Matrix3d& m) {
    if (!m.allFinite()) return Matrix3d::Constant(std::numeric_limits<double>::quiet_NaN());
    const double size = sizeOf(m);
    if (size == 0) return Matrix3d::Zero();
    const Matrix3d scaled = m / size;
    const double determinant = determinantOf(scaled);
    if (isFlat(scaled, determinant)) return pseudoInverse(scaled) / size;
    return cofactors(scaled).transpose() / determinant / size;
}

}  // namespace

GMatrix operator*(const GMatrix& a, const GMatrix& b) {
    GMatrix product;
    for (int row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            product[row][column] = a[row][0] * b[0][column] + a[row][1] * b[1][column] +
                                   a[row][2] * b[2][column] + a[row][3] * b[3][column];
        }
    }
    return product;
}

GMatrix GMatrix::Inverse() const {
    const Matrix3d upper = inverseOf(upper3x3(*this));
    GMatrix inverse;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            inverse[row][static_cast<std::size_t>(column)] = static_cast<float>(upper(row, column));
        }
    }
    const Eigen::RowVector3d translation(rows_[3][0], rows_[3][1], rows_[3][2]);
    const Eigen::RowVector3d moved = translation * upper;
    // 0 - 0 is 0, where a sign change would give a negative zero.
    for (int column = 0; column < 3; ++column) {
        inverse[3][static_cast<std::size_t>(column)] = static_cast<float>(0.0 - moved(column));
    }
    return inverse;
}

Quat GMatrix::Rotation() const {
    return Decompose().rotation;
}

Point3 GMatrix::Scaling() const {
    return Decompose().scaling;
}

GMatrix::Parts GMatrix::Decompose() const {
    const Matrix3d upper = upper3x3(*this);
    if (!upper.allFinite()) {
        return {Quat{},
                {static_cast<float>(upper.row(0).norm()), static_cast<float>(upper.row(1).norm()),
                 static_cast<float>(upper.row(2).norm())}};
    }
    const double size = sizeOf(upper);
    if (size == 0) return {Quat{}, Point3{}, false, true};
    const Matrix3d scaled = upper / size;
    const double determinant = determinantOf(scaled);
    const bool isSingular = isFlat(scaled, determinant);
    const bool isMirrored = !isSingular && determinant < 0;
    // 0 - 0 is 0, where a sign change would give a negative zero.
    const Polar polar = polarOf(isMirrored ? Matrix3d(Matrix3d::Zero() - scaled) : scaled, isSingular);
    const double sign = isMirrored ? -size : size;
    const auto scale = [&](int axis) { return static_cast<float>(sign * polar.stretch(axis, axis)); };
    return {quatOf(polar.rotation), {scale(0), scale(1), scale(2)}, isMirrored, isSingular};
}

bool GMatrix::IsSingular() const {
    return Decompose().isSingular;
}

bool GMatrix::IsMirrored() const {
    return Decompose().isMirrored;
}

bool GMatrix::IsFinite() const {
    for (const Row& row : rows_) {
        for (const float value : row) {
            if (!std::isfinite(value)) return false;
        }
    }
    return true;
}

Quat QuatFromRotationMatrix(const GMatrix& rotation) {
    return quatOf(upper3x3(rotation));
}

GMatrix RotationMatrixFromQuat(const Quat& q) {
    // The formula of the left-handed quaternion and row vectors, which is that of the right-handed one and
    // columns.
    const auto at = [](double value) { return static_cast<float>(value); };
    const double x = q.x;
    const double y = q.y;
    const double z = q.z;
    const double w = q.w;
    return {{at(1 - 2 * (y * y + z * z)), at(2 * (x * y - w * z)), at(2 * (x * z + w * y)), 0},
            {at(2 * (x * y + w * z)), at(1 - 2 * (x * x + z * z)), at(2 * (y * z - w * x)), 0},
            {at(2 * (x * z - w * y)), at(2 * (y * z + w * x)), at(1 - 2 * (x * x + y * y)), 0},
            {0, 0, 0, 1}};
}

}  // namespace velinor::host
