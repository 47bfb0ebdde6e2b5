#include "tools/meshprocessor/deviation.h"

#include <algorithm>

#include "tools/meshprocessor/orientation.h"

namespace velinor {
namespace {

constexpr std::size_t kMostPoints = 1'000'000;

// The place in a triangle with the weights i, j and n - i - j of its corners.
Point placeIn(const std::vector<Point>& points, const Face& face, unsigned i, unsigned j, unsigned n) {
    Point place{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const float sum = static_cast<float>(i) * points[face[0]][axis] +
                          static_cast<float>(j) * points[face[1]][axis] +
                          static_cast<float>(n - i - j) * points[face[2]][axis];
        place[axis] = sum / static_cast<float>(n);
    }
    return place;
}

// How often the sides of each face are divided so that there are about `places` in all.
unsigned divisionsFor(std::size_t faceCount, std::size_t places) {
    unsigned n = 1;
    while (n < 32 && faceCount * (n + 2) * (n + 3) / 2 <= places)
        ++n;
    return n;
}

// Calls `visit(place)` with places spread over `faces`.
template <class Visit>
void forEachPlace(const std::vector<Point>& points, const Faces& faces, std::size_t places,
                  const Visit& visit) {
    const std::vector<std::uint32_t> used = cornersOf(faces);
    const std::size_t step = used.size() / (kMostPoints + 1) + 1;
    for (std::size_t i = 0; i < used.size(); i += step)
        visit(points[used[i]]);
    const unsigned n = divisionsFor(faces.size(), places);
    if (n == 1) return;
    for (const Face& face : faces) {
        for (unsigned i = 0; i <= n; ++i) {
            for (unsigned j = 0; i + j <= n; ++j)
                visit(placeIn(points, face, i, j, n));
        }
    }
}

// Whether what lies inside of a target is as good as what lies on it.
enum class Inside { counts, isFree };

// The largest distance from `faces` to `target`. Most places are near: whether one is no farther than the
// farthest so far is a cheap question.
float farthest(const std::vector<Point>& points, const Faces& faces, std::size_t places,
               const Surface& target, Inside inside) {
    float most = 0;
    forEachPlace(points, faces, places, [&](const Point& place) {
        if (target.isWithin(place, most)) return;
        if (inside == Inside::isFree && target.contains(place)) return;
        most = std::max(most, target.distance(place));
    });
    return most;
}

}  // namespace

const Surface& DeviationMeter::meshSurface() {
    if (!meshSurface_) meshSurface_ = std::make_unique<const Surface>(mesh_.points, mesh_.faces);
    return *meshSurface_;
}

float DeviationMeter::betweenSurfaces(const Faces& shape) {
    const Surface target(mesh_.points, shape);
    return std::max(farthest(mesh_.points, mesh_.faces, places_, target, Inside::counts),
                    farthest(mesh_.points, shape, places_, meshSurface(), Inside::counts));
}

float DeviationMeter::betweenSolids(const std::vector<Faces>& parts) {
    Faces shape;
    for (const Faces& part : parts)
        shape.insert(shape.end(), part.begin(), part.end());
    const Surface target(mesh_.points, shape);
    const Inside inMesh = isClosed(mesh_.faces) ? Inside::isFree : Inside::counts;
    return std::max(farthest(mesh_.points, mesh_.faces, places_, target, Inside::isFree),
                    farthest(mesh_.points, shape, places_, meshSurface(), inMesh));
}

}  // namespace velinor
