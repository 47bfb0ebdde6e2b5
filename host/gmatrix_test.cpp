#include "host/gmatrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace velinor::host {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Row-vector matrices of right-handed rotations, counter-clockwise seen from the tip of the axis.
GMatrix aboutX(double degrees) {
    const auto c = static_cast<float>(std::cos(degrees * kPi / 180));
    const auto s = static_cast<float>(std::sin(degrees * kPi / 180));
    return {{1, 0, 0, 0}, {0, c, s, 0}, {0, -s, c, 0}, {0, 0, 0, 1}};
}
GMatrix aboutZ(double degrees) {
    const auto c = static_cast<float>(std::cos(degrees * kPi / 180));
    const auto s = static_cast<float>(std::sin(degrees * kPi / 180));
    return {{c, s, 0, 0}, {-s, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
}
GMatrix scale(float x, float y, float z) {
    return {{x, 0, 0, 0}, {0, y, 0, 0}, {0, 0, z, 0}, {0, 0, 0, 1}};
}

void expectNear(const Quat& actual, const Quat& expected, float tolerance = 1e-6F) {
    EXPECT_NEAR(actual.x, expected.x, tolerance) << actual << " is not " << expected;
    EXPECT_NEAR(actual.y, expected.y, tolerance) << actual << " is not " << expected;
    EXPECT_NEAR(actual.z, expected.z, tolerance) << actual << " is not " << expected;
    EXPECT_NEAR(actual.w, expected.w, tolerance) << actual << " is not " << expected;
}
void expectNear(const Point3& actual, const Point3& expected, float tolerance = 1e-6F) {
    EXPECT_NEAR(actual.x, expected.x, tolerance) << actual << " is not " << expected;
    EXPECT_NEAR(actual.y, expected.y, tolerance) << actual << " is not " << expected;
    EXPECT_NEAR(actual.z, expected.z, tolerance) << actual << " is not " << expected;
}
void expectNear(const GMatrix& actual, const GMatrix& expected, float tolerance) {
    for (int row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_NEAR(actual[row][column], expected[row][column], tolerance) << row << ", " << column;
        }
    }
}

GMatrix randomMatrix(std::mt19937& random) {
    std::uniform_real_distribution<float> entry(-2, 2);
    GMatrix m;
    for (int row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            m[row][column] = entry(random);
    }
    return m;
}

TEST(GMatrixRotation, IsTheConjugateOfTheRightHandedQuaternion) {
    const auto half = static_cast<float>(std::sqrt(0.5));
    EXPECT_EQ(GMatrix().Rotation(), (Quat{0, 0, 0, 1}));
    expectNear(aboutZ(90).Rotation(), {0, 0, -half, half});
    expectNear(aboutX(90).Rotation(), {-half, 0, 0, half});
    expectNear(aboutX(60).Rotation(), {-0.5F, 0, 0, static_cast<float>(std::sqrt(0.75))});
}

TEST(GMatrixRotation, KeepsExactZerosExact) {
    const Quat q = aboutZ(33).Rotation();
    EXPECT_EQ(q.x, 0);
    EXPECT_EQ(q.y, 0);
    EXPECT_FALSE(std::signbit(q.x));
    EXPECT_FALSE(std::signbit(q.y));
}

TEST(GMatrixRotation, HasAPositiveLargestComponentWhereTheTraceIsNotPositive) {
    expectNear(scale(1, -1, -1).Rotation(), {1, 0, 0, 0});
    expectNear(scale(-1, 1, -1).Rotation(), {0, 1, 0, 0});
    expectNear(scale(-1, -1, 1).Rotation(), {0, 0, 1, 0});
    const Quat q = aboutZ(270).Rotation();  // trace 1: w is the positive one
    EXPECT_GT(q.w, 0);
    const Quat r = aboutZ(181).Rotation();
    EXPECT_GT(r.z, 0);
}

TEST(GMatrixRotation, ComposesLikeTheMatrixProduct) {
    const GMatrix a = aboutZ(30);
    const GMatrix b = aboutX(50);
    expectNear(a.Rotation() * b.Rotation(), (a * b).Rotation());
}

TEST(GMatrixRotation, AgreesWithItsMatrix) {
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        GMatrix m = randomMatrix(random);
        if (m.IsSingular()) continue;
        m[3] = {0, 0, 0, 1};
        const Quat q = m.Rotation();
        EXPECT_NEAR(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1, 1e-6);
        Quat again = QuatFromRotationMatrix(RotationMatrixFromQuat(q));
        expectNear(again, q, 2e-6F);
    }
}

TEST(GMatrixScaling, IsTheDiagonalOfTheSymmetricFactor) {
    EXPECT_EQ(scale(2, 3, 4).Scaling(), (Point3{2, 3, 4}));
    expectNear((scale(2, 3, 4) * aboutZ(40)).Scaling(), {2, 3, 4});
    // A parent scaled (2, 1, 1) with a child turned 45 degrees: stretch factors 2 and 1, diagonal 1.5
    // and 1.5.
    expectNear((aboutZ(45) * scale(2, 1, 1)).Scaling(), {1.5F, 1.5F, 1});
}

TEST(GMatrixScaling, IsNegativeInAllAxesForAMirroredMatrix) {
    expectNear(scale(-1, 1, 1).Scaling(), {-1, -1, -1});
    expectNear(scale(1, 1, -2).Scaling(), {-1, -1, -2});
    expectNear(scale(-1, -1, -1).Scaling(), {-1, -1, -1});
    expectNear(scale(-1, -1, -1).Rotation(), {0, 0, 0, 1});
    EXPECT_TRUE(scale(-1, 1, 1).IsMirrored());
    EXPECT_FALSE(scale(-1, -1, 1).IsMirrored());
    EXPECT_FALSE(scale(-1, 0, 1).IsMirrored());
}

TEST(GMatrixDecompose, OfASingularMatrixIsFinite) {
    const GMatrix flat = scale(2, 3, 0) * aboutX(30);
    EXPECT_TRUE(flat.IsSingular());
    expectNear(flat.Scaling(), {2, 3, 0});
    expectNear(flat.Rotation(), aboutX(30).Rotation());
    expectNear(scale(0, 0, 5).Scaling(), {0, 0, 5});
    expectNear(scale(0, 0, 0).Scaling(), {0, 0, 0});
    expectNear(scale(0, 0, 0).Rotation(), {0, 0, 0, 1});
    for (const GMatrix& m : {scale(0, 0, 5), scale(0, -1, -1) * aboutZ(20)}) {
        const Quat q = m.Rotation();
        EXPECT_NEAR(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1, 1e-6) << q;
    }
}

TEST(GMatrixDecompose, KeepsScalesOfVeryDifferentSizeApart) {
    const GMatrix m = scale(1e6F, 1e-6F, 1) * aboutZ(20);
    EXPECT_FALSE(m.IsSingular());
    EXPECT_NEAR(m.Scaling().x, 1e6F, 1);
    EXPECT_NEAR(m.Scaling().z, 1, 1e-6);
    expectNear(m.Rotation(), aboutZ(20).Rotation(), 1e-5F);
}

TEST(GMatrixDecompose, RebuildsRandomMatrices) {
    std::mt19937 random(3);
    for (int i = 0; i < 500; ++i) {
        GMatrix m = randomMatrix(random);
        m[3] = {0, 0, 0, 1};
        if (m.IsSingular()) continue;
        // M = S * R, so S = M * R^-1 must be symmetric and hold the scaling on its diagonal.
        const GMatrix s = m * RotationMatrixFromQuat(m.Rotation()).Inverse();
        const Point3 diagonal = m.Scaling();
        EXPECT_NEAR(s[0][1], s[1][0], 3e-5);
        EXPECT_NEAR(s[0][2], s[2][0], 3e-5);
        EXPECT_NEAR(s[1][2], s[2][1], 3e-5);
        expectNear(Point3{s[0][0], s[1][1], s[2][2]}, diagonal, 3e-5F);
        EXPECT_EQ(m.IsMirrored(), diagonal.x < 0);
    }
}

TEST(GMatrixInverse, OfTheIdentityHasNoNegativeZeros) {
    const GMatrix inverse = GMatrix().Inverse();
    EXPECT_EQ(inverse, GMatrix());
    for (int row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column)
            EXPECT_FALSE(std::signbit(inverse[row][column]));
    }
}

TEST(GMatrixInverse, TimesTheMatrixIsTheIdentity) {
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const GMatrix m = randomMatrix(random);
        if (m.IsSingular() || std::abs(m.Scaling().x * m.Scaling().y * m.Scaling().z) < 0.05F) continue;
        expectNear(m * m.Inverse(), GMatrix(), 1e-4F);
    }
    EXPECT_EQ((scale(2, 4, 8).Inverse()), scale(0.5F, 0.25F, 0.125F));
}

TEST(GMatrixInverse, OfAFlatMatrixBringsItsImagesBackToTheirPlane) {
    GMatrix flat = scale(2, 3, 0) * aboutX(30);
    flat[3] = {1, 2, 3, 1};
    GMatrix child = aboutZ(20) * flat;
    child[3] = (GMatrix({1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {5, 6, 0, 1}) * flat)[3];
    expectNear(child * flat.Inverse() * flat, child, 1e-4F);
}

TEST(GMatrixDecompose, SeesTheMirroringOfAMatrixThatIsThinAlongItsColumns) {
    const GMatrix thin{
        {0.6F, 8e-5F, 0, 0}, {-0.48F, 3.6e-5F, 8e-5F, 0}, {-0.64F, 4.8e-5F, -6e-5F, 0}, {0, 0, 0, 1}};
    EXPECT_TRUE(thin.IsMirrored());
    EXPECT_FALSE(thin.IsSingular());
    expectNear(thin.Scaling(), {-0.360064F, -0.230477F, -0.409659F});
    GMatrix turnedOver = thin;
    for (int row = 0; row < 3; ++row)
        turnedOver[row][2] = -turnedOver[row][2];
    EXPECT_FALSE(turnedOver.IsMirrored());
    expectNear(turnedOver.Scaling(), {0.360064F, 0.230477F, 0.409659F});
}

TEST(GMatrixDecompose, OfAMirroredMatrixHasNoNegativeZeros) {
    for (const GMatrix& m : {scale(-1, 1, 1), scale(1, -2, 1), scale(1, 1, -1), scale(-1, -1, -1)}) {
        const Quat q = m.Rotation();
        for (const float value : {q.x, q.y, q.z, q.w})
            EXPECT_FALSE(value == 0 && std::signbit(value)) << q;
    }
}

TEST(GMatrixInverse, OfAThinMatrixIsExact) {
    const GMatrix thin{
        {0.6F, 0.8F, 0, 0}, {-0.48F, 0.36F, 8e-8F, 0}, {0.64F, -0.48F, 6e-8F, 0}, {0, 0, 0, 1}};
    EXPECT_FALSE(thin.IsSingular());
    expectNear(thin * thin.Inverse(), GMatrix(), 1e-5F);
}

TEST(GMatrixInverse, OfANotFiniteMatrixIsNotANumberWhateverWasInMemory) {
    for (const float entry :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        GMatrix m;
        m[1][1] = entry;
        const GMatrix inverse = m.Inverse();
        for (int row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 3; ++column)
                EXPECT_TRUE(std::isnan(inverse[row][column]));
        }
    }
}

TEST(GMatrix, TellsNotFiniteEntries) {
    GMatrix m;
    EXPECT_TRUE(m.IsFinite());
    m[1][1] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(m.IsFinite());
    EXPECT_FALSE(m.IsSingular());
    EXPECT_FALSE(m.IsMirrored());
    EXPECT_EQ(m.Rotation(), Quat{});
    EXPECT_TRUE(std::isnan(m.Scaling().y));
}

}  // namespace
}  // namespace velinor::host
