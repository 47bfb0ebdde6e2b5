#include "hosts/snapshot/render_normals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace velinor {
namespace {

using host::Point3;
using host::RNormal;

// A cube from -1 to 1, two faces a side, with a smoothing mask for each side: -z, +z, -y, +y, -x, +x.
SnapshotMesh makeCube(const std::array<std::uint32_t, 6>& masks) {
    SnapshotMesh mesh;
    for (int i = 0; i < 8; ++i) {
        mesh.vertices.push_back(
            {(i & 1) != 0 ? 1.0F : -1.0F, (i & 2) != 0 ? 1.0F : -1.0F, (i & 4) != 0 ? 1.0F : -1.0F});
    }
    mesh.faces = {{0, 2, 3}, {3, 1, 0}, {4, 5, 7}, {7, 6, 4}, {0, 1, 5}, {5, 4, 0},
                  {2, 6, 7}, {7, 3, 2}, {0, 4, 6}, {6, 2, 0}, {1, 3, 7}, {7, 5, 1}};
    for (std::size_t f = 0; f < mesh.faces.size(); ++f)
        mesh.smoothing.push_back(masks.at(f / 2));
    return mesh;
}

void expectNear(const Point3& actual, const Point3& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-6) << actual << " " << expected;
    EXPECT_NEAR(actual.y, expected.y, 1e-6) << actual << " " << expected;
    EXPECT_NEAR(actual.z, expected.z, 1e-6) << actual << " " << expected;
}

TEST(FaceNormal, FollowsTheCorners) {
    const SnapshotMesh cube = makeCube({});
    EXPECT_EQ(faceNormal(cube, 0), (Point3{0, 0, -1}));
    EXPECT_EQ(faceNormal(cube, 2), (Point3{0, 0, 1}));
    EXPECT_EQ(faceNormal(cube, 11), (Point3{1, 0, 0}));
}

TEST(FaceNormal, OfAFaceWithoutAreaIsZero) {
    SnapshotMesh mesh;
    mesh.vertices = {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}};
    mesh.faces = {{0, 1, 2}};
    EXPECT_EQ(faceNormal(mesh, 0), Point3{});
}

TEST(FaceNormal, OfATinyFaceHasLengthOne) {
    SnapshotMesh mesh;
    mesh.vertices = {{0, 0, 0}, {1e-40F, 0, 0}, {0, 1e-40F, 0}};
    mesh.faces = {{0, 1, 2}};
    EXPECT_EQ(faceNormal(mesh, 0), (Point3{0, 0, 1}));
}

TEST(RenderNormals, SmoothCubeHasOneNormalACorner) {
    const SnapshotMesh cube = makeCube({1, 1, 1, 1, 1, 1});
    const RenderNormals normals(cube);
    const float s = 1 / std::sqrt(3.0F);
    for (std::uint32_t v = 0; v < 8; ++v) {
        ASSERT_EQ(normals.of(v).size(), 1U);
        EXPECT_FALSE(normals.isSpecified(v));
        const Point3& p = cube.vertices[v];
        expectNear(normals.of(v)[0].normal, {p.x * s, p.y * s, p.z * s});  // the diagonals do not count twice
        EXPECT_EQ(normals.of(v)[0].smGroup, 1U);
    }
}

TEST(RenderNormals, CubeWithAGroupForEachSideHasThreeNormalsACorner) {
    const RenderNormals normals(makeCube({1, 2, 4, 8, 16, 32}));
    ASSERT_EQ(normals.of(0).size(), 3U);
    EXPECT_EQ(normals.of(0)[0], (RNormal{{0, 0, -1}, 1}));
    EXPECT_EQ(normals.of(0)[1], (RNormal{{0, -1, 0}, 4}));
    EXPECT_EQ(normals.of(0)[2], (RNormal{{-1, 0, 0}, 16}));
}

TEST(RenderNormals, FlatCubeHasNone) {
    const RenderNormals normals(makeCube({}));
    for (std::uint32_t v = 0; v < 8; ++v)
        EXPECT_TRUE(normals.of(v).empty());
    SnapshotMesh mesh = makeCube({});
    mesh.smoothing.clear();
    EXPECT_TRUE(RenderNormals(mesh).of(0).empty());
}

// Groups 1 and 2 are apart until a face of both comes.
TEST(RenderNormals, EntriesThatALaterFaceJoinsAreMerged) {
    const RenderNormals normals(makeCube({1, 0, 2, 0, 3, 0}));
    const float s = 1 / std::sqrt(3.0F);
    ASSERT_EQ(normals.of(0).size(), 1U);
    expectNear(normals.of(0)[0].normal, {-s, -s, -s});
    EXPECT_EQ(normals.of(0)[0].smGroup, 3U);
}

// Weights are angles: a corner of 90 degrees counts twice one of 45.
TEST(RenderNormals, AreWeightedByCornerAngle) {
    SnapshotMesh mesh;
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 0, 1}};
    mesh.faces = {{0, 1, 2}, {0, 3, 1}};  // normal +z with 90 degrees at vertex 0; normal +y with 45 degrees
    mesh.smoothing = {1, 1};
    EXPECT_EQ(faceNormal(mesh, 1), (Point3{0, 1, 0}));
    const float length = std::sqrt(5.0F);
    expectNear(RenderNormals(mesh).of(0)[0].normal, {0, 1 / length, 2 / length});
}

TEST(RenderNormals, SkipsFacesWithoutArea) {
    SnapshotMesh mesh;
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh.faces = {{0, 1, 1}, {0, 1, 2}};
    mesh.smoothing = {3, 4};
    const RenderNormals normals(mesh);
    ASSERT_EQ(normals.of(0).size(), 1U);
    EXPECT_EQ(normals.of(0)[0], (RNormal{{0, 0, 1}, 4}));
}

TEST(RenderNormals, GivenOnesComeFirst) {
    SnapshotMesh cube = makeCube({1, 1, 1, 1, 1, 1});
    cube.renderVertices.resize(8);
    cube.renderVertices[1] = Point3{5, 0, 0};
    cube.renderVertices[2] = std::vector<RNormal>{{{1, 0, 0}, 7}, {{0, 1, 0}, 8}};
    cube.renderVertices[3] = std::vector<RNormal>{};
    const RenderNormals built(cube);
    EXPECT_EQ(built.of(0).size(), 1U);
    EXPECT_TRUE(built.isSpecified(1));
    EXPECT_EQ(built.of(1)[0].normal, (Point3{5, 0, 0}));
    EXPECT_EQ(built.of(2).size(), 2U);
    EXPECT_EQ(built.of(2)[1], (RNormal{{0, 1, 0}, 8}));
    EXPECT_TRUE(built.of(3).empty());
    EXPECT_FALSE(built.isSpecified(3));
    cube.specifiedNormals.assign(8, {0, 0, 9});
    const RenderNormals specified(cube);
    EXPECT_TRUE(specified.isSpecified(0));
    EXPECT_EQ(specified.of(0)[0].normal, (Point3{0, 0, 9}));
    EXPECT_EQ(specified.of(1)[0].normal, (Point3{5, 0, 0}));
    EXPECT_EQ(specified.of(2).size(), 2U);
    EXPECT_FALSE(specified.isSpecified(2));
}

// The rule once more, vertex by vertex over all faces, with angles from the law of cosines.
struct PlainEntry {
    double x = 0;
    double y = 0;
    double z = 0;
    std::uint32_t mask = 0;
};

double distance(const Point3& a, const Point3& b) {
    return std::hypot(double{a.x} - b.x, double{a.y} - b.y, double{a.z} - b.z);
}

std::vector<PlainEntry> plainEntries(const SnapshotMesh& mesh, std::uint32_t vertex) {
    std::vector<PlainEntry> entries;
    for (std::size_t f = 0; f < mesh.faces.size(); ++f) {
        const Point3 n = faceNormal(mesh, static_cast<std::uint32_t>(f));
        if (mesh.smoothing[f] == 0 || n == Point3{}) continue;
        for (std::size_t k = 0; k < 3; ++k) {
            if (mesh.faces[f][k] != vertex) continue;
            const double a = distance(mesh.vertices[vertex], mesh.vertices[mesh.faces[f][(k + 1) % 3]]);
            const double b = distance(mesh.vertices[vertex], mesh.vertices[mesh.faces[f][(k + 2) % 3]]);
            const double c = distance(mesh.vertices[mesh.faces[f][(k + 1) % 3]],
                                      mesh.vertices[mesh.faces[f][(k + 2) % 3]]);
            const double angle = std::acos(std::clamp((a * a + b * b - c * c) / (2 * a * b), -1.0, 1.0));
            auto entry = std::find_if(entries.begin(), entries.end(),
                                      [&](const PlainEntry& e) { return (e.mask & mesh.smoothing[f]) != 0; });
            if (entry == entries.end()) entry = entries.insert(entries.end(), PlainEntry{});
            *entry = {entry->x + n.x * angle, entry->y + n.y * angle, entry->z + n.z * angle,
                      entry->mask | mesh.smoothing[f]};
        }
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        for (std::size_t j = i + 1; j < entries.size();) {
            if ((entries[i].mask & entries[j].mask) == 0) {
                ++j;
                continue;
            }
            entries[i] = {entries[i].x + entries[j].x, entries[i].y + entries[j].y,
                          entries[i].z + entries[j].z, entries[i].mask | entries[j].mask};
            entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(j));
            j = i + 1;  // what was passed over may share a bit now
        }
    }
    return entries;
}

TEST(RenderNormals, AgreeWithThePlainRule) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> coordinate(-1, 1);
    for (int round = 0; round < 100; ++round) {
        SnapshotMesh mesh;
        for (int v = 0; v < 8; ++v)
            mesh.vertices.push_back({coordinate(random), coordinate(random), coordinate(random)});
        for (int f = 0; f < 30; ++f) {
            mesh.faces.push_back({static_cast<std::uint32_t>(random() % 8),
                                  static_cast<std::uint32_t>(random() % 8),
                                  static_cast<std::uint32_t>(random() % 8)});
            mesh.smoothing.push_back(static_cast<std::uint32_t>(random() & random() & random()) & 0xFFFU);
        }
        const RenderNormals normals(mesh);
        for (std::uint32_t v = 0; v < 8; ++v) {
            const auto expected = plainEntries(mesh, v);
            ASSERT_EQ(normals.of(v).size(), expected.size());
            for (std::size_t i = 0; i < expected.size(); ++i) {
                const PlainEntry& e = expected[i];
                const double sum = std::hypot(e.x, e.y, e.z);
                const double length = sum == 0 ? 1 : sum;  // zero stays zero
                EXPECT_EQ(normals.of(v)[i].smGroup, e.mask);
                EXPECT_NEAR(normals.of(v)[i].normal.x, e.x / length, 1e-4);
                EXPECT_NEAR(normals.of(v)[i].normal.y, e.y / length, 1e-4);
                EXPECT_NEAR(normals.of(v)[i].normal.z, e.z / length, 1e-4);
            }
        }
    }
}

// 33 faces, 32 of them with a group of their own: as many normals as a mask has bits.
TEST(RenderNormals, HoldsANormalForEachGroup) {
    SnapshotMesh mesh;
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    for (std::uint32_t bit = 0; bit < 32; ++bit) {
        mesh.faces.push_back({0, 1, 2});
        mesh.smoothing.push_back(1U << bit);
    }
    EXPECT_EQ(RenderNormals(mesh).of(0).size(), 32U);
    mesh.faces.push_back({0, 1, 2});
    mesh.smoothing.push_back(0xFFFFFFFF);
    ASSERT_EQ(RenderNormals(mesh).of(0).size(), 1U);
    EXPECT_EQ(RenderNormals(mesh).of(0)[0], (RNormal{{0, 0, 1}, 0xFFFFFFFF}));
}

}  // namespace
}  // namespace velinor
