#include "scene/transform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velinor {
namespace {

using host::GMatrix;
using host::Point3;
using host::Quat;

const float kHalf = static_cast<float>(std::sqrt(0.5));

GMatrix at(float x, float y, float z) {
    return {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}};
}

void expectNear(const Quat& actual, const Quat& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-6) << actual << " is not " << expected;
    EXPECT_NEAR(actual.y, expected.y, 1e-6) << actual << " is not " << expected;
    EXPECT_NEAR(actual.z, expected.z, 1e-6) << actual << " is not " << expected;
    EXPECT_NEAR(actual.w, expected.w, 1e-6) << actual << " is not " << expected;
}

// Turns a package vector by a right-handed unit quaternion.
Point3 turned(const Quat& q, const Point3& v) {
    const Quat result = q * Quat{v.x, v.y, v.z, 0} * host::Conjugate(q);
    return {result.x, result.y, result.z};
}

TEST(ToPackagePoint, SwapsTheAxesLiterally) {
    struct Case {
        Point3 host;
        Point3 package;
    };
    for (const auto& [host, package] : {Case{{1, 2, 3}, {1, 3, -2}}, Case{{0, 1, 0}, {0, 0, -1}},
                                        Case{{0, 0, 1}, {0, 1, 0}}, Case{{-1, -2, -3}, {-1, -3, 2}}}) {
        EXPECT_EQ(toPackagePoint(host), package) << "host point " << host;
    }
    EXPECT_TRUE(std::signbit(toPackagePoint({0, 0, 0}).z));
    EXPECT_FALSE(std::signbit(toPackagePoint({0, -0.0F, 0}).z));
}

TEST(ToPackageTransform, LeavesTheMatrixAloneWhereAsked) {
    const GMatrix m{{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12, 1}};
    EXPECT_EQ(toPackageTransform(m, false), m);
}

TEST(ToPackageTransform, MovesTheTranslationLikeAPoint) {
    const NodeTransform transform = decompose(toPackageTransform(at(1, 2, 3), true));
    EXPECT_EQ(transform.position, (Point3{1, 3, -2}));
    EXPECT_EQ(transform.orientation, (Quat{0, 0, 0, -1}));
    EXPECT_EQ(transform.scale, (Point3{1, 1, 1}));
}

TEST(ToPackageTransform, GivesNoNegativeZerosForANodeAtTheOrigin) {
    for (const GMatrix& m : {GMatrix(), at(0, -0.0F, 0), at(-0.0F, 0, -0.0F)}) {
        const NodeTransform transform = decompose(toPackageTransform(m, true) * GMatrix().Inverse());
        for (const float zero : {transform.position.x, transform.position.y, transform.position.z,
                                 transform.orientation.x, transform.orientation.y, transform.orientation.z}) {
            EXPECT_EQ(zero, 0);
            EXPECT_FALSE(std::signbit(zero));
        }
    }
}

TEST(ToPackageTransform, AgreesWithToPackagePoint) {
    const GMatrix m{{0.5F, 2, -3, 0}, {4, -1, 6, 0}, {7, 8, 0.25F, 0}, {10, 11, 12, 1}};
    const Point3 p{3, -4, 5};
    const auto mapped = [](const Point3& v, const GMatrix& by) {
        const GMatrix moved = at(v.x, v.y, v.z) * by;
        return moved.Translation();
    };
    EXPECT_EQ(mapped(toPackagePoint(p), toPackageTransform(m, true)), toPackagePoint(mapped(p, m)));
}

TEST(ToPackageTransform, SwapsTheScaleWithTheAxes) {
    const GMatrix scale{{2, 0, 0, 0}, {0, 3, 0, 0}, {0, 0, 4, 0}, {0, 0, 0, 1}};
    EXPECT_EQ(decompose(toPackageTransform(scale, true)).scale, (Point3{2, 4, 3}));
}

TEST(PackageOrientation, TurnsAHostRotationAboutUpIntoAPackageRotationAboutUp) {
    // +90 degrees about host Z, counter-clockwise seen from above: local X comes to lie along host Y.
    const GMatrix m{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const Quat q = packageOrientation(toPackageTransform(m, true));
    expectNear(q, {0, -kHalf, 0, -kHalf});
    const Point3 x = turned(q, {1, 0, 0});  // host +Y is package -Z
    EXPECT_NEAR(x.z, -1, 1e-6) << x;
}

TEST(PackageOrientation, TurnsACameraAsAPersonExpects) {
    // A host camera that looks along host +Y, upright: local -Z is host +Y, local Y is host +Z.
    const GMatrix m{{1, 0, 0, 0}, {0, 0, 1, 0}, {0, -1, 0, 0}, {0, 0, 0, 1}};
    Quat q = packageOrientation(toPackageTransform(m, true)) * kLookAlongMinusZ;
    q.Normalize();
    const Point3 look = turned(q, {0, 0, -1});
    const Point3 up = turned(q, {0, 1, 0});
    EXPECT_NEAR(look.z, -1, 1e-6) << look;
    EXPECT_NEAR(up.y, 1, 1e-6) << up;
}

TEST(Decompose, OfAChildThatSitsInItsParentIsTheIdentity) {
    const GMatrix m = toPackageTransform({{0, 2, 0, 0}, {-2, 0, 0, 0}, {0, 0, 2, 0}, {5, 6, 7, 1}}, true);
    const NodeTransform transform = decompose(m * m.Inverse());
    EXPECT_EQ(transform.position, (Point3{0, 0, 0}));
    expectNear(transform.orientation, {0, 0, 0, -1});
    EXPECT_EQ(transform.scale, (Point3{1, 1, 1}));
    EXPECT_FALSE(transform.isMirrored);
    EXPECT_FALSE(transform.isSingular);
}

TEST(Decompose, TellsMirroredAndSingularMatrices) {
    const GMatrix mirrored{{-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_TRUE(decompose(mirrored).isMirrored);
    EXPECT_EQ(decompose(mirrored).scale, (Point3{-1, -1, -1}));
    const GMatrix flat{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 1}};
    EXPECT_TRUE(decompose(flat).isSingular);
    EXPECT_EQ(decompose(flat).scale, (Point3{1, 1, 0}));
}

}  // namespace
}  // namespace velinor
