#include "host/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velinor::host {
namespace {

TEST(Quat, MultipliesAsHamiltonDid) {
    const Quat i{1, 0, 0, 0};
    const Quat j{0, 1, 0, 0};
    const Quat k{0, 0, 1, 0};
    EXPECT_EQ(i * j, k);
    EXPECT_EQ(j * k, i);
    EXPECT_EQ(k * i, j);
    EXPECT_EQ(j * i, (Quat{0, 0, -1, 0}));
    EXPECT_EQ(i * i, (Quat{0, 0, 0, -1}));
    EXPECT_EQ((Quat{2, 3, 5, 7} * Quat{11, 13, 17, 19}), (Quat{101, 169, 207, -13}));
}

TEST(Quat, NormalizesToLengthOne) {
    Quat q{3, 0, 4, 0};
    q.Normalize();
    EXPECT_EQ(q, (Quat{0.6F, 0, 0.8F, 0}));
}

TEST(Quat, NormalizesNumbersWhoseSquaresOverflow) {
    Quat q{3e38F, 0, 0, 0};
    q.Normalize();
    EXPECT_EQ(q, (Quat{1, 0, 0, 0}));
    Quat tiny{0, 1e-40F, 0, 0};
    tiny.Normalize();
    EXPECT_EQ(tiny, (Quat{0, 1, 0, 0}));
}

TEST(Quat, NormalizesZeroToTheIdentityAndLeavesNotFiniteOnesAlone) {
    Quat zero{0, 0, 0, 0};
    zero.Normalize();
    EXPECT_EQ(zero, Quat{});
    Quat infinite{std::numeric_limits<float>::infinity(), 0, 0, 1};
    infinite.Normalize();
    EXPECT_EQ(infinite.x, std::numeric_limits<float>::infinity());
}

TEST(Point3, NormalizesToLengthOneAndKeepsZero) {
    EXPECT_EQ(Normalize(Point3{0, 3, -4}), (Point3{0, 0.6F, -0.8F}));
    EXPECT_EQ(Normalize(Point3{}), Point3{});
    EXPECT_EQ(Normalize(Point3{3e38F, 0, 0}), (Point3{1, 0, 0})) << "no overflow on the way";
    EXPECT_EQ(Normalize(Point3{0, 0, 1e-45F}), (Point3{0, 0, 1})) << "nor underflow";
}

TEST(Box3, GrowsFromEmpty) {
    Box3 box;
    EXPECT_TRUE(box.IsEmpty());
    box.Include({1, 2, 3});
    box.Include({-1, 5, std::nanf("")});
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_EQ(box.pmin, (Point3{-1, 2, 3}));
    EXPECT_EQ(box.pmax, (Point3{1, 5, 3}));
}

}  // namespace
}  // namespace velinor::host
