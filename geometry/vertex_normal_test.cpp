#include "geometry/vertex_normal.h"

#include <gtest/gtest.h>

#include <vector>

namespace velinor {
namespace {

using host::Point3;
using host::RNormal;
using host::RVertex;

constexpr Point3 kFaceNormal{0, 0, 1};
constexpr Point3 kX{1, 0, 0};
constexpr Point3 kY{0, 1, 0};
constexpr Point3 kMinusX{-1, 0, 0};

// A mesh that knows the normal of its face number 7.
class OneFaceMesh final : public host::Mesh {
  public:
    void buildNormals() override {}
    std::span<const host::Face> faces() const override { return {}; }
    std::span<const Point3> verts() const override { return {}; }
    int getNumMaps() const override { return 2; }
    bool mapSupport(int /*channel*/) const override { return false; }
    std::span<const host::TVFace> mapFaces(int /*channel*/) const override { return {}; }
    std::span<const host::UVVert> mapVerts(int /*channel*/) const override { return {}; }
    RVertex getRVertex(std::uint32_t /*vertex*/) const override { return {}; }
    Point3 getFaceNormal(std::uint32_t face) const override { return face == 7 ? kFaceNormal : Point3{}; }
};

Point3 normalOf(const std::vector<RNormal>& normals, std::uint32_t smoothing,
                std::uint32_t furtherFlags = 0) {
    const RVertex vertex{static_cast<std::uint32_t>(normals.size()) | furtherFlags, normals};
    return vertexNormal(OneFaceMesh(), vertex, 7, smoothing);
}

TEST(VertexNormal, IsTheSpecifiedOneWhateverTheGroups) {
    EXPECT_EQ(normalOf({{kX, 0}}, 0, RVertex::SPECIFIED_NORMAL), kX);
    EXPECT_EQ(normalOf({{kX, 2}}, 1, RVertex::SPECIFIED_NORMAL), kX);
}

TEST(VertexNormal, IsTheFacesWhereTheVertexHasNone) {
    EXPECT_EQ(normalOf({}, 1), kFaceNormal);
    EXPECT_EQ(normalOf({}, 1, 0x100), kFaceNormal) << "only the low 8 bits count normals";
}

TEST(VertexNormal, IsTheFacesWhereTheFaceIsInNoGroup) {
    EXPECT_EQ(normalOf({{kX, 1}, {kY, 2}}, 0), kFaceNormal);
    EXPECT_EQ(normalOf({{kX, 1}}, 0), kFaceNormal);
}

TEST(VertexNormal, IsTheOnlyOneWhateverItsGroup) {
    EXPECT_EQ(normalOf({{kX, 2}}, 1), kX);
}

TEST(VertexNormal, IsTheLastOneThatSharesAGroup) {
    EXPECT_EQ(normalOf({{kX, 1}, {kY, 2}, {kMinusX, 4}}, 2), kY);
    EXPECT_EQ(normalOf({{kX, 1}, {kY, 2}, {kMinusX, 4}}, 3), kY);
    EXPECT_EQ(normalOf({{kX, 1}, {kY, 3}, {kMinusX, 1}}, 1), kMinusX);
    EXPECT_EQ(normalOf({{kX, 0x80000000}, {kY, 2}}, 0x80000000), kX);
}

TEST(VertexNormal, IsTheFacesWhereNoneSharesAGroup) {
    EXPECT_EQ(normalOf({{kX, 1}, {kY, 2}}, 4), kFaceNormal);
}

}  // namespace
}  // namespace velinor
