#include "tools/meshprocessor/convex_parts.h"

#include <gtest/gtest.h>

#include <random>

#include "tools/meshprocessor/deviation.h"
#include "tools/meshprocessor/mesh_test_support.h"
#include "tools/meshprocessor/orientation.h"
#include "tools/meshprocessor/unit_mesh.h"

namespace velinor {
namespace {

void expectConvexParts(const TriangleMesh& unit, const std::vector<Faces>& parts) {
    for (const Faces& part : parts) {
        EXPECT_LT(unevenness(unit.points, part), kHullRounding);
        EXPECT_GE(signedVolume(unit.points, part), 0);
        EXPECT_TRUE(isClosed(part));
    }
}

TEST(ConvexParts, OfAnLAreTwoBodies) {
    const TriangleMesh unit = toUnitMesh(lShapeMesh());
    const std::vector<Faces> parts = convexParts(unit, {8000, 32});
    EXPECT_EQ(parts.size(), 2U);
    expectConvexParts(unit, parts);
    EXPECT_LT(DeviationMeter(unit).betweenSolids(parts), 1e-5F);
}

TEST(ConvexParts, OfABoxAreTheBox) {
    const TriangleMesh unit = toUnitMesh(boxMesh());
    const std::vector<Faces> parts = convexParts(unit, {8000, 32});
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].size(), 12U);
    EXPECT_EQ(cornersOf(parts[0]).size(), 8U);
}

TEST(ConvexParts, OfASphereAreOneBody) {
    const TriangleMesh unit = toUnitMesh(sphereMesh(40));
    const std::vector<Faces> parts = convexParts(unit, {8000, 32});
    EXPECT_EQ(parts.size(), 1U);
    expectConvexParts(unit, parts);
}

TEST(ConvexParts, OfARingGoAroundTheHole) {
    const TriangleMesh unit = toUnitMesh(torusMesh(12));
    const std::vector<Faces> parts = convexParts(unit, {8000, 32});
    EXPECT_GE(parts.size(), 4U);
    EXPECT_LE(parts.size(), 32U);
    expectConvexParts(unit, parts);
    EXPECT_LT(DeviationMeter(unit).betweenSolids(parts), 0.06F);
    for (const Faces& part : parts)
        EXPECT_FALSE(Surface(unit.points, part).contains({0, 0, 0}));
}

TEST(ConvexParts, AreAsManyAsAllowed) {
    const TriangleMesh unit = toUnitMesh(torusMesh(12));
    for (const std::size_t most : {1U, 2U, 3U, 7U}) {
        const std::vector<Faces> parts = convexParts(unit, {8000, most});
        EXPECT_LE(parts.size(), most);
        expectConvexParts(unit, parts);
    }
}

TEST(ConvexParts, OfTwoBoxesAreTwo) {
    const TriangleMesh unit = toUnitMesh(together(boxMesh(), boxMesh({2, 2, 2}, {3, 3, 3})));
    EXPECT_EQ(convexParts(unit, {8000, 32}).size(), 2U);
    EXPECT_EQ(convexParts(unit, {8000, 1}).size(), 1U);
}

TEST(ConvexParts, JoinsWhatLiesTogether) {
    TriangleMesh mesh;
    for (const float x : {0.0F, 100.0F}) {
        for (int i = 0; i < 2000; ++i) {
            const float y = static_cast<float>(i % 50);
            const float z = static_cast<float>(i / 50);
            mesh = together(std::move(mesh), boxMesh({x, y, z}, {x + 0.5F, y + 0.5F, z + 0.5F}));
        }
    }
    const TriangleMesh unit = toUnitMesh(mesh);
    const std::vector<Faces> parts = convexParts(unit, {8000, 2});
    ASSERT_EQ(parts.size(), 2U);
    for (const Faces& part : parts)
        EXPECT_FALSE(Surface(unit.points, part).contains({0, 0, 0}));
}

TEST(ConvexParts, AreTheSameOnEachRun) {
    const TriangleMesh unit = toUnitMesh(torusMesh(10));
    EXPECT_EQ(convexParts(unit, {8000, 8}), convexParts(unit, {8000, 8}));
}

TEST(ConvexParts, TakesMeshesThatAreNotSurfaces) {
    std::mt19937 random(5);
    for (int round = 0; round < 20; ++round) {
        TriangleMesh mesh;
        const std::uint32_t points = 4 + random() % 60;
        for (std::uint32_t i = 0; i < points; ++i) {
            mesh.points.push_back({static_cast<float>(random() % 1000), static_cast<float>(random() % 1000),
                                   static_cast<float>(random() % (round % 2 == 0 ? 1 : 1000))});
        }
        for (std::uint32_t i = 0; i < 100; ++i) {
            const auto a = static_cast<std::uint32_t>(random() % points);
            const auto b = static_cast<std::uint32_t>(random() % points);
            const auto c = static_cast<std::uint32_t>(random() % points);
            if (a != b && b != c && c != a) mesh.faces.push_back({a, b, c});
        }
        const TriangleMesh unit = toUnitMesh(mesh);
        const std::vector<Faces> parts = convexParts(unit, {8000, 12});
        EXPECT_LE(parts.size(), 12U);
        expectConvexParts(unit, parts);
    }
}

}  // namespace
}  // namespace velinor
