// The nodes of a finished package, placed in the world: what a runtime makes of index.jsx.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velinor {

using PackagePoint = std::array<double, 3>;

// Where a node stands: a point of it (row vector) goes through `axes`, then `position` is added.
struct PackagePlacement {
    std::array<PackagePoint, 3> axes{PackagePoint{1, 0, 0}, PackagePoint{0, 1, 0}, PackagePoint{0, 0, 1}};
    PackagePoint position{};

    PackagePoint pointOf(const PackagePoint& point) const;
};

struct PackageNode {
    PackagePlacement local;      // as it stands in the file, relative to the node above
    PackagePlacement world;      // the product of all above it
    std::string mesh;            // the url, "Chair.mesh"; empty where the node is no mesh
    std::string light;           // "point", "spot", "directional"; empty where the node is no light
    bool isHelperLight = false;  // the second of a pair that the exporter adds for a directional light
};

// The node elements of an index.jsx in their order. Throws std::runtime_error where the file is malformed.
std::vector<PackageNode> readPackageNodes(const std::filesystem::path& indexJsx);

}  // namespace velinor
