#include "tools/meshprocessor/decimate.h"

#include <gtest/gtest.h>

#include <random>

#include "tools/meshprocessor/mesh_test_support.h"
#include "tools/meshprocessor/orientation.h"
#include "tools/meshprocessor/unit_mesh.h"

namespace velinor {
namespace {

constexpr double kDeviationRounding = 1e-5;

Decimation decimated(const TriangleMesh& unit, const DecimationLimits& limits) {
    DeviationMeter meter(unit);
    return decimate(unit, limits, meter);
}

TEST(Decimate, KeepsTheTolerance) {
    const TriangleMesh unit = toUnitMesh(torusMesh(40));
    std::size_t before = unit.faces.size();
    for (const double tolerance : {0.001, 0.01, 0.05, 0.2}) {
        const Decimation result = decimated(unit, {0, 0, tolerance});
        EXPECT_LT(result.faces.size(), before) << tolerance;
        EXPECT_LE(farthestPoint(unit, result.faces), tolerance + kDeviationRounding) << tolerance;
        EXPECT_LE(farthestPoint(unit, result.faces), result.deviation + kDeviationRounding) << tolerance;
        EXPECT_LE(result.deviation, tolerance + kDeviationRounding) << tolerance;
        before = result.faces.size();
    }
}

TEST(Decimate, MakesLittleOfAFlatGrid) {
    const TriangleMesh unit = toUnitMesh(gridMesh(30, [](float, float) { return 0.0F; }));
    const Decimation result = decimated(unit, {0, 0, 0.001});
    EXPECT_LE(result.faces.size(), 4U);
    EXPECT_LE(result.deviation, 1e-5F);
}

TEST(Decimate, KeepsABox) {
    const TriangleMesh unit = toUnitMesh(boxMesh());
    for (const double tolerance : {0.0, 0.01, 0.2, 0.4}) {
        const Decimation result = decimated(unit, {10, 10, tolerance});
        EXPECT_EQ(result.faces, unit.faces) << tolerance;
        EXPECT_EQ(result.deviation, 0) << tolerance;
    }
}

TEST(Decimate, StopsAtTheFewestFacesAndVertices) {
    const TriangleMesh unit = toUnitMesh(sphereMesh(20));
    for (const auto& [faces, vertices] : {std::pair<std::size_t, std::size_t>{100, 10}, {10, 100}, {0, 0}}) {
        const Decimation result = decimated(unit, {faces, vertices, 0.3});
        EXPECT_GE(result.faces.size(), faces);
        EXPECT_GE(cornersOf(result.faces).size(), vertices);
        EXPECT_LT(result.faces.size(), 300U);
    }
    EXPECT_EQ(decimated(unit, {unit.faces.size(), 0, 0.3}).faces, unit.faces);
    EXPECT_EQ(decimated(unit, {0, unit.points.size(), 0.3}).faces, unit.faces);
}

TEST(Decimate, KeepsTheToleranceOfRandomMeshes) {
    std::mt19937 random(11);
    const auto number = [&random] { return std::uniform_real_distribution<float>(0, 1)(random); };
    for (int round = 0; round < 25; ++round) {
        const float a = 10 * number();
        const float b = 10 * number();
        const float rough = 0.02F * number();
        const TriangleMesh mesh = gridMesh(5 + random() % 30, [&](float x, float y) {
            return 0.2F * std::sin(a * x) * std::cos(b * y) + rough * number();
        });
        const TriangleMesh unit = toUnitMesh(mesh);
        const double tolerance = 0.1 * double{number()};
        const Decimation result = decimated(unit, {4, 4, tolerance});
        EXPECT_LE(farthestPoint(unit, result.faces), tolerance + kDeviationRounding);
        EXPECT_GE(result.faces.size(), 4U);
        for (const Face& face : result.faces) {
            for (const std::uint32_t corner : face)
                ASSERT_LT(corner, unit.points.size());
        }
    }
}

TEST(Decimate, TakesMeshesThatAreNotSurfaces) {
    std::mt19937 random(13);
    for (int round = 0; round < 30; ++round) {
        TriangleMesh mesh;
        const std::uint32_t points = 4 + random() % 60;
        for (std::uint32_t i = 0; i < points; ++i) {
            mesh.points.push_back({static_cast<float>(random() % 5), static_cast<float>(random() % 5),
                                   static_cast<float>(random() % 5)});
        }
        mesh.points.push_back({9, 0, 0});
        mesh.points.push_back({0, 9, 0});
        mesh.faces.push_back({0, points, points + 1});
        for (std::uint32_t i = 0; i < 200; ++i) {
            const auto a = static_cast<std::uint32_t>(random() % points);
            const auto b = static_cast<std::uint32_t>(random() % points);
            const auto c = static_cast<std::uint32_t>(random() % points);
            if (a != b && b != c && c != a) mesh.faces.push_back({a, b, c});
        }
        const TriangleMesh unit = toUnitMesh(mesh);
        EXPECT_LE(farthestPoint(unit, decimated(unit, {4, 4, 0.1}).faces), 0.1F + 1e-5F);
    }
}

TEST(ReduceTo, ComesNearTheNumberOfFaces) {
    const TriangleMesh unit = toUnitMesh(torusMesh(60));
    const Faces faces = reduceTo(unit, 500);
    EXPECT_LE(faces.size(), 500U);
    EXPECT_GE(faces.size(), 450U);
    EXPECT_TRUE(isClosed(faces));
    EXPECT_EQ(reduceTo(unit, unit.faces.size()), unit.faces);
}

}  // namespace
}  // namespace velinor
