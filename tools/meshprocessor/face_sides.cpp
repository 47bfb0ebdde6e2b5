#include "tools/meshprocessor/face_sides.h"

#include <algorithm>
#include <tuple>

namespace velinor {

std::vector<Side> sidesByEdge(const Faces& faces) {
    std::vector<Side> sides;
    sides.reserve(faces.size() * 3);
    for (std::size_t i = 0; i < faces.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            const auto [low, high] = std::minmax(faces[i][k], faces[i][(k + 1) % 3]);
            sides.push_back({low, high, static_cast<std::uint32_t>(i), faces[i][k] == low});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
        return std::tie(a.low, a.high, a.face) < std::tie(b.low, b.high, b.face);
    });
    return sides;
}

}  // namespace velinor
