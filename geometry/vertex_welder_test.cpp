#include "geometry/vertex_welder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include "geometry/weld_rule.h"

namespace velinor {
namespace {

using host::Point3;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct Corner {
    Point3 position;
    Point3 normal{0, 0, 1};
    std::vector<TexCoord> texCoords = {};
};

// The rule as it reads: all vertices of one key in the order of insertion.
class PlainWalk {
  public:
    std::uint32_t weld(const Corner& corner) {
        const MeshVertex vertex{corner.position, corner.normal, corner.texCoords};
        const std::int32_t key = weldKey(corner.position);
        const auto [begin, end] = weldIndex_.equal_range(key);
        for (auto i = begin; i != end; ++i) {
            const Corner& candidate = vertices_[i->second];
            if (isSameVertex({candidate.position, candidate.normal, candidate.texCoords}, vertex))
                return i->second;
        }
        const auto index = static_cast<std::uint32_t>(vertices_.size());
        vertices_.push_back(corner);
        weldIndex_.emplace(key, index);
        return index;
    }

  private:
    std::vector<Corner> vertices_;
    std::multimap<std::int32_t, std::uint32_t> weldIndex_;
};

std::vector<std::uint32_t> weldAll(const std::vector<Corner>& corners) {
    VertexWelder welder(corners.empty() ? 0 : corners.front().texCoords.size(), 0);
    std::vector<std::uint32_t> indices;
    for (const Corner& corner : corners)
        indices.push_back(welder.weld({corner.position, corner.normal, corner.texCoords}));
    return indices;
}

std::vector<std::uint32_t> walkAll(const std::vector<Corner>& corners) {
    PlainWalk walk;
    std::vector<std::uint32_t> indices;
    for (const Corner& corner : corners)
        indices.push_back(walk.weld(corner));
    return indices;
}

TEST(WeldKey, SumsWholeMillionths) {
    for (const auto& [position, key] : {std::pair<Point3, std::int32_t>{{0, 0, 0}, 0},
                                        {{1, 2, 3}, 6'000'000},
                                        {{-1, 0, 0}, -999'999},  // -1000000 + 0.5, towards zero
                                        {{1, -1, 0}, 1},
                                        {{4e-7F, 0, 0}, 0},
                                        {{6e-7F, 0, 0}, 1},
                                        {{3000, 0, 0}, -1'294'967'296},  // modulo 2^32
                                        {{1e30F, 2, 0}, 2'000'000},
                                        {{-1e30F, 2, 0}, 2'000'000},
                                        {{kInfinity, kNan, 3}, 3'000'000}}) {
        EXPECT_EQ(weldKey(position), key) << position;
    }
}

TEST(VertexWelder, KeepsPositionsApartThatRoundToDifferentKeys) {
    EXPECT_EQ(weldAll({{{0.4999999e-6F, 1, 0}}, {{0.5000001e-6F, 1, 0}}}),
              (std::vector<std::uint32_t>{0, 1}));
}

TEST(VertexWelder, JoinsPositionsWithinTheTolerance) {
    EXPECT_EQ(weldAll({{{0.1F, 0, 0}}, {{0.1F + 7.5e-9F, 0, 0}}}), (std::vector<std::uint32_t>{0, 0}));
    EXPECT_EQ(weldAll({{{0.5F, 0, 0}}, {{std::nextafter(0.5F, 1.0F), 0, 0}}}),
              (std::vector<std::uint32_t>{0, 1}));
    EXPECT_EQ(weldAll({{{0, 0, 0}, {0, 9e-9F, 1}}, {{0, 0, 0}, {0, 0, 1}}}),
              (std::vector<std::uint32_t>{0, 0}));
    EXPECT_EQ(weldAll({{{0, 0, 0}, {0, 2e-8F, 1}}, {{0, 0, 0}, {0, 0, 1}}}),
              (std::vector<std::uint32_t>{0, 1}));
}

TEST(VertexWelder, ComparesTexCoordsExactly) {
    const Point3 p{1, 2, 3};
    const Point3 n{0, 0, 1};
    EXPECT_EQ(weldAll({{p, n, {{0, 0}}}, {p, n, {{0, 1e-9F}}}, {p, n, {{-0.0F, 0}}}, {p, n, {{1e-9F, 0}}}}),
              (std::vector<std::uint32_t>{0, 1, 0, 2}));
    EXPECT_EQ(weldAll({{p, n, {{0, 0}, {1, 1}}}, {p, n, {{0, 0}, {1, 2}}}, {p, n, {{0, 0}, {1, 1}}}}),
              (std::vector<std::uint32_t>{0, 1, 0}));
}

TEST(VertexWelder, NeverJoinsTexCoordsThatAreNoNumbers) {
    const Point3 p{1, 2, 3};
    EXPECT_EQ(weldAll({{p, p, {{kNan, 0}}},
                       {p, p, {{kNan, 0}}},
                       {p, p, {{0, 0}}},
                       {p, p, {{0, kNan}}},
                       {p, p, {{0, 0}}}}),
              (std::vector<std::uint32_t>{0, 1, 2, 3, 2}));
    EXPECT_EQ(weldAll({{p, p, {{kInfinity, 0}}}, {p, p, {{kInfinity, 0}}}}),
              (std::vector<std::uint32_t>{0, 0}));
}

TEST(VertexWelder, TakesADifferenceThatIsNoNumberForNone) {
    EXPECT_EQ(weldAll({{{0, 0, 0}}, {{kNan, 0, 0}}, {{0, 0, 0}}}), (std::vector<std::uint32_t>{0, 0, 0}));
    EXPECT_EQ(weldAll({{{kInfinity, 0, 0}}, {{0, 0, 0}}, {{kInfinity, 0, 0}}, {{-kInfinity, 0, 0}}}),
              (std::vector<std::uint32_t>{0, 1, 0, 2}));
    EXPECT_EQ(weldAll({{{1, 0, 0}, {0, 0, 1}}, {{1, 0, 0}, {kNan, 0, 1}}, {{1, 0, 0}, {0, 1, 0}}}),
              (std::vector<std::uint32_t>{0, 0, 1}));
}

// Draws corners from a few values, so that many lie within the tolerance of each other or just beyond it.
class RandomCorners {
  public:
    RandomCorners(unsigned seed, bool withSpecialValues)
        : random_(seed), withSpecialValues_(withSpecialValues) {}

    std::vector<Corner> make(std::size_t count, std::size_t texCoordCount) {
        std::vector<Corner> corners;
        for (std::size_t i = 0; i < count; ++i) {
            if (!corners.empty() && below(3) == 0) {
                corners.push_back(corners[below(corners.size())]);
                continue;
            }
            Corner corner{point(), point(), {}};
            for (std::size_t t = 0; t < texCoordCount; ++t)
                corner.texCoords.push_back({texCoord(), texCoord()});
            corners.push_back(corner);
        }
        return corners;
    }

  private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    float coordinate() {
        constexpr float kBases[] = {0,     -0.0F,   1e-6F, 5e-7F,   -5e-7F, 0.125F, 0.1249999F,
                                    0.25F, -0.125F, 1e20F, 1.5e-6F, 1,      -1,     2.384185791015625e-07F};
        constexpr float kSpecial[] = {kNan, kInfinity, -kInfinity, 3e38F};
        if (withSpecialValues_ && below(12) == 0) return kSpecial[below(std::size(kSpecial))];
        const float base = kBases[below(std::size(kBases))];
        return base + static_cast<float>(static_cast<int>(below(9)) - 4) * 3e-9F;
    }
    Point3 point() {
        const float first = coordinate();
        return below(2) == 0 ? Point3{first, 0, 0}
                             : Point3{first, coordinate(), below(2) == 0 ? 0 : coordinate()};
    }
    float texCoord() {
        constexpr float kValues[] = {0, -0.0F, 0.5F, kNan};
        return kValues[below(withSpecialValues_ ? 4 : 3)];
    }

    std::mt19937 random_;
    bool withSpecialValues_;
};

TEST(VertexWelder, FindsWhatThePlainWalkFinds) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        RandomCorners random(seed, seed % 2 == 1);
        const auto corners = random.make(20 + seed, seed % 3);
        ASSERT_EQ(weldAll(corners), walkAll(corners)) << "seed " << seed;
    }
}

TEST(VertexWelder, FindsWhatThePlainWalkFindsOnGrids) {
    for (const float step : {1.0F, 1e-3F, 1e-7F, 4e-9F}) {
        std::vector<Corner> corners;
        for (int repeat = 0; repeat < 2; ++repeat) {
            for (int y = 0; y < 30; ++y) {
                for (int x = 0; x < 30; ++x)
                    corners.push_back({{static_cast<float>(x) * step, static_cast<float>(y) * step, 0}});
            }
        }
        ASSERT_EQ(weldAll(corners), walkAll(corners)) << "step " << step;
    }
}

TEST(VertexWelder, CopesWithManyVertices) {
    VertexWelder welder(1, 10);
    constexpr std::uint32_t kSide = 700;
    for (int repeat = 0; repeat < 2; ++repeat) {
        for (std::uint32_t i = 0; i < kSide * kSide; ++i) {
            const TexCoord texCoord{static_cast<float>(i % kSide), static_cast<float>(i / kSide)};
            ASSERT_EQ(welder.weld({{texCoord.u, texCoord.v, 0}, {0, 1, 0}, {&texCoord, 1}}), i);
        }
    }
    EXPECT_EQ(welder.vertexList().size(), kSide * kSide);
    EXPECT_EQ(welder.vertexList()[kSide + 3].position, (Point3{3, 1, 0}));
}

}  // namespace
}  // namespace velinor
