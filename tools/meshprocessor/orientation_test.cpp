#include "tools/meshprocessor/orientation.h"

#include <gtest/gtest.h>

#include <random>

#include "tools/meshprocessor/mesh_test_support.h"
#include "tools/meshprocessor/weld.h"

namespace velinor {
namespace {

TEST(Orientation, TurnsAnInsideOutBoxOutward) {
    const TriangleMesh box = insideOut(boxMesh());
    ASSERT_LT(signedVolume(box.points, box.faces), 0);
    Faces faces = box.faces;
    orientOutward(box.points, faces);
    EXPECT_DOUBLE_EQ(signedVolume(box.points, faces), 1);
    EXPECT_TRUE(isClosed(faces));
}

TEST(Orientation, LeavesAnOutwardBoxAsItIs) {
    const TriangleMesh box = boxMesh();
    Faces faces = box.faces;
    orientOutward(box.points, faces);
    EXPECT_EQ(faces, box.faces);
}

TEST(Orientation, MakesFacesOfAClosedPartAgree) {
    std::mt19937 random(7);
    const TriangleMesh torus = torusMesh(12);
    for (int round = 0; round < 20; ++round) {
        Faces faces = torus.faces;
        for (Face& face : faces) {
            if (random() % 2 == 0) std::swap(face[1], face[2]);
        }
        orientOutward(torus.points, faces);
        EXPECT_TRUE(isClosed(faces));
        EXPECT_NEAR(signedVolume(torus.points, faces), 2 * 9.8696 * 0.09, 0.1);
    }
}

TEST(Orientation, TreatsEachPartByItself) {
    const TriangleMesh two = together(insideOut(boxMesh()), boxMesh({2, 0, 0}, {3, 1, 1}));
    Faces faces = two.faces;
    orientOutward(two.points, faces);
    EXPECT_DOUBLE_EQ(signedVolume(two.points, faces), 2);
}

TEST(Orientation, TreatsBoxesThatShareAnEdgeAsTwo) {
    const TriangleMesh two =
        weld(together(insideOut(boxMesh({0, 0, 0}, {1, 1, 1})), boxMesh({1, 1, 0}, {2, 2, 1})));
    ASSERT_EQ(two.points.size(), 14U);
    Faces faces = two.faces;
    orientOutward(two.points, faces);
    EXPECT_DOUBLE_EQ(signedVolume(two.points, faces), 2);
}

TEST(Orientation, KeepsTheWindingOfOpenMeshes) {
    TriangleMesh box = insideOut(boxMesh());
    box.faces.pop_back();
    Faces faces = box.faces;
    orientOutward(box.points, faces);
    EXPECT_EQ(faces, box.faces);
    EXPECT_FALSE(isClosed(faces));
}

TEST(Orientation, KeepsWhatHasOneSide) {
    TriangleMesh band;  // with half a turn
    constexpr std::uint32_t kSteps = 20;
    for (std::uint32_t i = 0; i < kSteps; ++i) {
        band.points.push_back({static_cast<float>(i), 0, 0});
        band.points.push_back({static_cast<float>(i), 1, 0});
    }
    for (std::uint32_t i = 0; i < kSteps; ++i) {
        const std::uint32_t a = 2 * i;
        const bool isLast = i + 1 == kSteps;
        const std::uint32_t c = isLast ? 1 : a + 2;
        const std::uint32_t d = isLast ? 0 : a + 3;
        band.faces.push_back({a, c, a + 1});
        band.faces.push_back({a + 1, c, d});
    }
    Faces faces = band.faces;
    orientOutward(band.points, faces);
    EXPECT_EQ(faces, band.faces);
}

}  // namespace
}  // namespace velinor
