#include "tools/meshprocessor/weld.h"

#include <gtest/gtest.h>

#include "tools/meshprocessor/mesh_test_support.h"

namespace velinor {
namespace {

TEST(Weld, MakesOnePointOfEqualPositions) {
    TriangleMesh split;
    const TriangleMesh box = boxMesh();
    for (const Face& face : box.faces) {
        const auto first = static_cast<std::uint32_t>(split.points.size());
        for (const std::uint32_t corner : face)
            split.points.push_back(box.points[corner]);
        split.faces.push_back({first, first + 1, first + 2});
    }
    const TriangleMesh welded = weld(split);
    EXPECT_EQ(welded.points.size(), 8U);
    ASSERT_EQ(welded.faces.size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) {
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_EQ(welded.points[welded.faces[i][k]], box.points[box.faces[i][k]]);
    }
}

TEST(Weld, DropsFacesWithTwoCornersAtOnePlace) {
    const TriangleMesh mesh{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}}, {{0, 1, 3}, {0, 1, 2}, {2, 2, 2}}};
    EXPECT_EQ(weld(mesh), (TriangleMesh{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}}));
}

TEST(Weld, DropsPointsWithoutFaces) {
    const TriangleMesh mesh{{{9, 9, 9}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{1, 2, 3}}};
    EXPECT_EQ(weld(mesh).points.size(), 3U);
    EXPECT_EQ(weld({{{1, 2, 3}}, {}}), TriangleMesh());
}

}  // namespace
}  // namespace velinor
