#include "tools/meshprocessor/orientation.h"

#include <algorithm>
#include <utility>

#include "tools/meshprocessor/face_sides.h"

namespace velinor {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFFU;

// The neighbour of a face over one of its sides.
struct Neighbour {
    std::uint32_t face = kNone;
    bool isOpposed = false;  // both faces go the same way along the edge: one is inside out to the other
};

struct Parts {
    std::vector<std::uint32_t> partOfFace;
    std::vector<bool> isTurned;    // by face: against the first face of its part
    std::vector<bool> isOneSided;  // by part: turning cannot make its faces agree
};

std::vector<std::array<Neighbour, 3>> neighboursOf(const Faces& faces, const std::vector<Side>& sides) {
    std::vector<std::array<Neighbour, 3>> neighbours(faces.size());
    const auto link = [&](const Side& from, const Side& to) {
        for (Neighbour& slot : neighbours[from.face]) {
            if (slot.face != kNone) continue;
            slot = {to.face, from.isUp == to.isUp};
            return;
        }
    };
    forEachEdge(sides, [&](auto begin, auto end) {
        if (end - begin != 2) return;
        link(begin[0], begin[1]);
        link(begin[1], begin[0]);
    });
    return neighbours;
}

Parts partsOf(const Faces& faces, const std::vector<Side>& sides) {
    const std::vector<std::array<Neighbour, 3>> neighbours = neighboursOf(faces, sides);
    Parts parts{std::vector(faces.size(), kNone), std::vector<bool>(faces.size()), {}};
    std::vector<std::uint32_t> open;
    for (std::uint32_t first = 0; first < faces.size(); ++first) {
        if (parts.partOfFace[first] != kNone) continue;
        const auto part = static_cast<std::uint32_t>(parts.isOneSided.size());
        parts.isOneSided.push_back(false);
        parts.partOfFace[first] = part;
        open.push_back(first);
        while (!open.empty()) {
            const std::uint32_t face = open.back();
            open.pop_back();
            for (const Neighbour& next : neighbours[face]) {
                if (next.face == kNone) continue;
                const bool isTurned = parts.isTurned[face] != next.isOpposed;
                if (parts.partOfFace[next.face] != kNone) {
                    if (parts.isTurned[next.face] != isTurned) parts.isOneSided[part] = true;
                    continue;
                }
                parts.partOfFace[next.face] = part;
                parts.isTurned[next.face] = isTurned;
                open.push_back(next.face);
            }
        }
    }
    return parts;
}

// By part: whether it stays open, its faces turned as they are to be.
std::vector<bool> openParts(const Parts& parts, const std::vector<Side>& sides) {
    std::vector<bool> isOpen = parts.isOneSided;
    std::vector<std::pair<std::uint32_t, int>> balance;  // by part: ups less downs of an edge
    forEachEdge(sides, [&](auto begin, auto end) {
        balance.clear();
        for (auto side = begin; side != end; ++side) {
            balance.emplace_back(parts.partOfFace[side->face],
                                 side->isUp != parts.isTurned[side->face] ? 1 : -1);
        }
        std::sort(balance.begin(), balance.end());
        for (std::size_t i = 0; i < balance.size();) {
            const std::uint32_t part = balance[i].first;
            int sum = 0;
            for (; i < balance.size() && balance[i].first == part; ++i)
                sum += balance[i].second;
            if (sum != 0) isOpen[part] = true;
        }
    });
    return isOpen;
}

void turn(Face& face) {
    std::swap(face[1], face[2]);
}

// Six times the volume of the tetrahedron of a face and `origin`.
double sixfoldVolume(std::span<const Point> points, const Face& face, const Point& origin) {
    double corner[3][3];
    for (std::size_t k = 0; k < 3; ++k) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            corner[k][axis] = double{points[face[k]][axis]} - double{origin[axis]};
    }
    const auto& [a, b, c] = corner;
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

}  // namespace

bool isClosed(const Faces& faces) {
    bool isBalanced = true;
    forEachEdge(sidesByEdge(faces), [&isBalanced](auto begin, auto end) {
        const auto ups = std::count_if(begin, end, [](const Side& side) { return side.isUp; });
        if (2 * ups != end - begin) isBalanced = false;
    });
    return isBalanced;
}

double signedVolume(std::span<const Point> points, const Faces& faces) {
    double sum = 0;
    for (const Face& face : faces)
        sum += sixfoldVolume(points, face, points[faces.front()[0]]);
    return sum / 6;
}

void orientOutward(std::span<const Point> points, Faces& faces) {
    const std::vector<Side> sides = sidesByEdge(faces);
    const Parts parts = partsOf(faces, sides);
    const std::vector<bool> isOpen = openParts(parts, sides);
    std::vector<double> volume(isOpen.size());
    std::vector<std::uint32_t> origin(isOpen.size(), kNone);
    for (std::size_t i = 0; i < faces.size(); ++i) {
        const std::uint32_t part = parts.partOfFace[i];
        if (isOpen[part]) continue;
        if (parts.isTurned[i]) turn(faces[i]);
        if (origin[part] == kNone) origin[part] = faces[i][0];
        volume[part] += sixfoldVolume(points, faces[i], points[origin[part]]);
    }
    for (std::size_t i = 0; i < faces.size(); ++i) {
        if (!isOpen[parts.partOfFace[i]] && volume[parts.partOfFace[i]] < 0) turn(faces[i]);
    }
}

}  // namespace velinor
