#include "tools/sky/cube_levels.h"

#include <algorithm>
#include <cmath>

namespace velinor {
namespace {

constexpr int kLargestBlurred = 16;  // texels a face

// Calls visit(face, column, row) for each texel of a level of `size`.
template <typename Visit>
void forEachTexel(int size, const Visit& visit) {
    for (int face = 0; face < kCubeFaces; ++face) {
        for (int row = 0; row < size; ++row) {
            for (int column = 0; column < size; ++column)
                visit(face, column, row);
        }
    }
}

// The part of the sphere that a small square at (s, t) of a face covers, but for a factor.
double solidAngle(double s, double t) {
    const double squared = 1 + s * s + t * t;
    return 1 / (squared * std::sqrt(squared));
}

// The mean of `colour` over a texel, from 2 x 2 points in it.
Rgb sampleTexel(const ColourOf& colour, const CubePlace& centre, double texel) {
    Rgb sum{};
    for (const double ds : {-0.25, 0.25}) {
        for (const double dt : {-0.25, 0.25}) {
            const CubePlace place{centre.face, centre.s + ds * texel, centre.t + dt * texel};
            sum = sum + 0.25 * colour(normalised(directionAt(place)));
        }
    }
    return sum;
}

CubeLevel sampleLevel(int size, const ColourOf& colour) {
    CubeLevel level(size);
    forEachTexel(size, [&](int face, int column, int row) {
        level.at(face, column, row) =
            sampleTexel(colour, {face, level.centre(column), level.centre(row)}, 2.0 / size);
    });
    return level;
}

// The level of half the size: means of 2 x 2 texels, weighted by how much of the sphere each covers.
CubeLevel halved(const CubeLevel& level) {
    CubeLevel half(level.size() / 2);
    forEachTexel(half.size(), [&](int face, int column, int row) {
        Rgb sum{};
        double total = 0;
        for (const int y : {2 * row, 2 * row + 1}) {
            for (const int x : {2 * column, 2 * column + 1}) {
                const double weight = solidAngle(level.centre(x), level.centre(y));
                sum = sum + weight * level.at(face, x, y);
                total += weight;
            }
        }
        half.at(face, column, row) = (1 / total) * sum;
    });
    return half;
}

// A level of `size` that shows `source` out of focus: each texel is a mean over a round spot, two texels in
// radius and heaviest in its middle.
CubeLevel blurred(const CubeLevel& source, int size) {
    struct Sample {
        Direction direction;
        Rgb weighted;
        double weight;
    };
    std::vector<Sample> samples;
    forEachTexel(source.size(), [&](int face, int column, int row) {
        const CubePlace place{face, source.centre(column), source.centre(row)};
        const double weight = solidAngle(place.s, place.t);
        samples.push_back({normalised(directionAt(place)), weight * source.at(face, column, row), weight});
    });
    CubeLevel level(size);
    const double radius = 3.2 / size;  // an edge of a face is 1.57 long
    forEachTexel(size, [&](int face, int column, int row) {
        const Direction middle = normalised(directionAt({face, level.centre(column), level.centre(row)}));
        Rgb sum{};
        double total = 0;
        for (const Sample& sample : samples) {
            const double nearness = 1 - (1 - dot(middle, sample.direction)) / (radius * radius / 2);
            if (nearness <= 0) continue;
            sum = sum + nearness * nearness * sample.weighted;
            total += nearness * nearness * sample.weight;
        }
        level.at(face, column, row) = (1 / total) * sum;
    });
    return level;
}

// `level` with each texel at an edge replaced by the mean of it and its neighbours on other faces: one at an
// edge, two at a corner. A single texel has four neighbours; there all six faces get their common mean.
CubeLevel withSharedEdges(const CubeLevel& level) {
    const int size = level.size();
    CubeLevel shared = level;
    if (size == 1) {
        Rgb sum{};
        for (int face = 0; face < kCubeFaces; ++face)
            sum = sum + level.at(face, 0, 0);
        forEachTexel(1, [&](int face, int, int) { shared.at(face, 0, 0) = (1.0 / kCubeFaces) * sum; });
        return shared;
    }
    const auto beyond = [&](int face, int column, int row) {
        return level.towards(directionAt({face, level.centre(column), level.centre(row)}));
    };
    forEachTexel(size, [&](int face, int column, int row) {
        Rgb sum = level.at(face, column, row);
        int count = 1;
        if (column == 0 || column == size - 1) {
            sum = sum + beyond(face, column == 0 ? -1 : size, row);
            ++count;
        }
        if (row == 0 || row == size - 1) {
            sum = sum + beyond(face, column, row == 0 ? -1 : size);
            ++count;
        }
        if (count > 1) shared.at(face, column, row) = (1.0 / count) * sum;
    });
    return shared;
}

}  // namespace

const Rgb& CubeLevel::towards(const Direction& direction) const {
    const CubePlace place = placeOf(direction);
    const auto texel = [this](double at) {
        return std::clamp(static_cast<int>(std::floor((at + 1) / 2 * size_)), 0, size_ - 1);
    };
    return at(place.face, texel(place.s), texel(place.t));
}

std::vector<CubeLevel> makeCubeLevels(int size, const ColourOf& colour) {
    std::vector<CubeLevel> levels{sampleLevel(size, colour)};
    while (levels.back().size() > 1)
        levels.push_back(halved(levels.back()));
    // Means of squares show their squares where a level has few of them, and the small levels, which blurred
    // reflections use, stand for much of the sphere.
    for (std::size_t i = levels.size() - 2; i >= 2 && levels[i].size() <= kLargestBlurred; --i)
        levels[i] = blurred(levels[i - 2], levels[i].size());
    for (std::size_t i = 1; i < levels.size(); ++i)
        levels[i] = withSharedEdges(levels[i]);
    return levels;
}

}  // namespace velinor
