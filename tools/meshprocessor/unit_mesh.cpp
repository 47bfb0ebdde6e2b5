#include "tools/meshprocessor/unit_mesh.h"

#include <Eigen/Geometry>
#include <algorithm>

#include "tools/meshprocessor/point_vector.h"

namespace velinor {
namespace {

bool hasArea(const TriangleMesh& unit) {
    // Points of 32-bit numbers on one line leave about this much.
    constexpr double kNone = 1e-9;
    return std::ranges::any_of(unit.faces, [&unit](const Face& face) {
        const Eigen::Vector3d origin = preciseVectorOf(unit.points[face[0]]);
        const Eigen::Vector3d a = preciseVectorOf(unit.points[face[1]]) - origin;
        const Eigen::Vector3d b = preciseVectorOf(unit.points[face[2]]) - origin;
        const double longest = std::max({a.norm(), b.norm(), (a - b).norm()});
        // The height over the longest side.
        return a.cross(b).norm() > kNone * longest;
    });
}

}  // namespace

TriangleMesh toUnitMesh(const TriangleMesh& mesh) {
    Eigen::AlignedBox3d box;
    for (const Point& point : mesh.points)
        box.extend(preciseVectorOf(point));
    const double extent = box.isEmpty() ? 0 : box.sizes().maxCoeff();
    if (mesh.faces.empty() || extent == 0)
        throw MeshError("the mesh has no face with an area; nothing can collide with it");
    TriangleMesh unit;
    unit.faces = mesh.faces;
    unit.points.reserve(mesh.points.size());
    const Eigen::Vector3d centre = box.center();
    for (const Point& point : mesh.points) {
        const Eigen::Vector3f moved = ((preciseVectorOf(point) - centre) / extent).cast<float>();
        unit.points.push_back({moved.x(), moved.y(), moved.z()});
    }
    if (!hasArea(unit)) throw MeshError("all faces of the mesh are lines; nothing can collide with it");
    return unit;
}

}  // namespace velinor
