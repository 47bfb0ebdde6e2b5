// Which faces meet at an edge.
#pragma once

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// One side of a face. `low` < `high`; `isUp`: the face goes from low to high.
struct Side {
    std::uint32_t low;
    std::uint32_t high;
    std::uint32_t face;
    bool isUp;

    bool hasEdgeOf(const Side& other) const { return low == other.low && high == other.high; }
};

// The sides of all faces, those of one edge next to each other, in the order of their faces.
std::vector<Side> sidesByEdge(const Faces& faces);

// Calls `visit(begin, end)` with the sides of each edge.
template <class Visit>
void forEachEdge(const std::vector<Side>& sides, const Visit& visit) {
    for (auto begin = sides.begin(); begin != sides.end();) {
        auto end = begin + 1;
        while (end != sides.end() && end->hasEdgeOf(*begin))
            ++end;
        visit(begin, end);
        begin = end;
    }
}

}  // namespace velinor
