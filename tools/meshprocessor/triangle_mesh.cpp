#include "tools/meshprocessor/triangle_mesh.h"

#include <algorithm>

namespace velinor {

std::vector<std::uint32_t> cornersOf(const Faces& faces) {
    std::vector<std::uint32_t> corners;
    corners.reserve(faces.size() * 3);
    for (const Face& face : faces)
        corners.insert(corners.end(), face.begin(), face.end());
    std::sort(corners.begin(), corners.end());
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    return corners;
}

}  // namespace velinor
