#include "tools/meshprocessor/convex_hull.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "tools/meshprocessor/mesh_test_support.h"
#include "tools/meshprocessor/orientation.h"

namespace velinor {
namespace {

Faces hullOf(const std::vector<Point>& points) {
    std::vector<std::uint32_t> all(points.size());
    std::iota(all.begin(), all.end(), 0U);
    return convexHull(points, all);
}

TEST(ConvexHull, LeavesABoxABox) {
    const TriangleMesh box = boxMesh({-0.5F, -0.25F, -0.1F}, {0.5F, 0.25F, 0.1F});
    const Faces hull = hullOf(box.points);
    EXPECT_EQ(hull.size(), 12U);
    EXPECT_EQ(cornersOf(hull).size(), 8U);
    EXPECT_NEAR(signedVolume(box.points, hull), 0.1, 1e-6);
}

TEST(ConvexHull, LeavesOutWhatIsInsideOrOnAFace) {
    TriangleMesh box = boxMesh();
    box.points.push_back({0, 0, 0});
    box.points.push_back({0.5F, 0, 0});
    box.points.push_back({0.5F, 0.5F, 0});
    const Faces hull = hullOf(box.points);
    EXPECT_EQ(cornersOf(hull), (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(ConvexHull, OfRandomPointsIsConvexClosedAndAroundThem) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> number(-0.5F, 0.5F);
    for (int round = 0; round < 40; ++round) {
        std::vector<Point> points(4 + random() % 300);
        const float flatness = round % 4 == 0 ? 0.001F : 1.0F;
        for (Point& point : points) {
            const float x = number(random);
            const float z = flatness * number(random);
            point = {0.8F * x + 0.6F * z, number(random), 0.6F * x - 0.8F * z};
        }
        const Faces hull = hullOf(points);
        EXPECT_TRUE(isClosed(hull));
        EXPECT_GT(signedVolume(points, hull), 0);
        EXPECT_LT(unevenness(points, hull), kHullRounding);
        const Surface surface(points, hull);
        for (const Point& point : points)
            EXPECT_TRUE(surface.contains(point) || surface.distance(point) < kHullRounding);
    }
}

TEST(ConvexHull, OfAFlatPieceHasAFrontAndABack) {
    const std::vector<Point> square{
        {0, 0, 0}, {0.5F, 0, 0.25F}, {0.5F, 0.5F, 0.25F}, {0, 0.5F, 0}, {0.25F, 0.25F, 0.125F}};
    const Faces hull = hullOf(square);
    EXPECT_EQ(hull.size(), 4U);
    EXPECT_EQ(cornersOf(hull), (std::vector<std::uint32_t>{0, 1, 2, 3}));
    EXPECT_TRUE(isClosed(hull));
}

TEST(ConvexHull, OfALineIsNothing) {
    EXPECT_TRUE(hullOf({{0, 0, 0}, {0.1F, 0.1F, 0.1F}, {0.5F, 0.5F, 0.5F}}).empty());
    EXPECT_TRUE(hullOf({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}).empty());
    EXPECT_TRUE(hullOf({{0, 0, 0}}).empty());
    EXPECT_TRUE(hullOf({}).empty());
}

}  // namespace
}  // namespace velinor
