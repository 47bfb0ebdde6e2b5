#include "tools/meshprocessor/convex_hull.h"

#include <LinearMath/btConvexHullComputer.h>

#include <Eigen/Eigenvalues>
#include <Eigen/Geometry>
#include <algorithm>

#include "tools/meshprocessor/orientation.h"

namespace velinor {
namespace {

using Vectors = std::vector<Eigen::Vector3d>;

// Below this height, as a fraction of the size, points count as flat.
constexpr double kFlat = 1e-5;
// Below this width they count as a line.
constexpr double kLine = 1e-6;
// Below this height they are turned so that their height is along an axis.
constexpr double kThin = 1e-2;

Vectors chosenVectors(std::span<const Point> points, std::span<const std::uint32_t> chosen) {
    Vectors vectors;
    vectors.reserve(chosen.size());
    for (const std::uint32_t i : chosen)
        vectors.emplace_back(points[i][0], points[i][1], points[i][2]);
    return vectors;
}

Eigen::AlignedBox3d boxOf(const Vectors& vectors) {
    Eigen::AlignedBox3d box;
    for (const Eigen::Vector3d& vector : vectors)
        box.extend(vector);
    return box;
}

// The directions in which the vectors spread, the least first, as rows of a rotation.
Eigen::Matrix3d mainDirections(const Vectors& vectors) {
    const Eigen::Vector3d centre = boxOf(vectors).center();
    Eigen::Vector3d sum = Eigen::Vector3d::Zero();
    Eigen::Matrix3d squares = Eigen::Matrix3d::Zero();
    for (const Eigen::Vector3d& vector : vectors) {
        const Eigen::Vector3d arm = vector - centre;
        sum += arm;
        squares += arm * arm.transpose();
    }
    squares -= sum * sum.transpose() / static_cast<double>(vectors.size());
    return Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(squares).eigenvectors().transpose();
}

// The hull's library rounds each axis to 1/10000 of the size along it. Thin pieces that lie askew would
// dissolve in that, so they are turned unless they lie along an axis already, and what is flat is made
// exactly so. False where nothing but a line is left.
bool prepare(Vectors& vectors) {
    const Eigen::Matrix3d turn = mainDirections(vectors);
    Vectors turned = vectors;
    for (Eigen::Vector3d& vector : turned)
        vector = turn * vector;
    const Eigen::Vector3d sizes = boxOf(turned).sizes();
    const double size = sizes.maxCoeff();
    const double width = std::max(std::min(sizes[1], sizes[2]), sizes[0]);
    if (width <= kLine * size) return false;
    if (sizes[0] > kThin * size) return true;
    Eigen::Index height = 0;
    const double ownHeight = boxOf(vectors).sizes().minCoeff(&height);
    if (ownHeight > std::max(1.01 * sizes[0], kLine * size)) {
        vectors = std::move(turned);
        height = 0;
    }
    if (std::min(sizes[0], ownHeight) <= kFlat * size) {
        for (Eigen::Vector3d& vector : vectors)
            vector[height] = 0;
    }
    return true;
}

// A face of the library is a loop of edges around a polygon.
void appendPolygon(const btConvexHullComputer& hull, int face, std::span<const std::uint32_t> chosen,
                   Faces& faces) {
    const auto cornerOf = [&](const btConvexHullComputer::Edge* edge) {
        return chosen[static_cast<std::size_t>(hull.original_vertex_index[edge->getSourceVertex()])];
    };
    const btConvexHullComputer::Edge* first = &hull.edges[hull.faces[face]];
    const btConvexHullComputer::Edge* edge = first->getNextEdgeOfFace();
    for (const auto* next = edge->getNextEdgeOfFace(); edge != first && next != first;
         edge = next, next = next->getNextEdgeOfFace()) {
        faces.push_back({cornerOf(first), cornerOf(edge), cornerOf(next)});
    }
}

}  // namespace

Faces convexHull(std::span<const Point> points, std::span<const std::uint32_t> chosen) {
    if (chosen.size() < 3) return {};
    Vectors vectors = chosenVectors(points, chosen);
    if (!prepare(vectors)) return {};
    btConvexHullComputer hull;
    hull.compute(vectors.front().data(), sizeof(Eigen::Vector3d), static_cast<int>(vectors.size()), 0, 0);
    Faces faces;
    for (int i = 0; i < hull.faces.size(); ++i)
        appendPolygon(hull, i, chosen, faces);
    // The turning above may have been a reflection.
    orientOutward(points, faces);
    return faces;
}

}  // namespace velinor
