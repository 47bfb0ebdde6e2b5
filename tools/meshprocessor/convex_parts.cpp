#include "tools/meshprocessor/convex_parts.h"

#include <hacdHACD.h>
#include <Eigen/Geometry>
#include <algorithm>
#include <limits>

#include "tools/meshprocessor/convex_hull.h"
#include "tools/meshprocessor/decimate.h"

namespace velinor {
namespace {

using Clusters = std::vector<Faces>;

// What the decomposition library works on; it changes the points while it runs.
struct LibraryMesh {
    std::vector<HACD::Vec3<HACD::Real>> points;
    std::vector<HACD::Vec3<long>> faces;
};

LibraryMesh libraryMeshOf(const TriangleMesh& mesh) {
    LibraryMesh copy;
    copy.points.reserve(mesh.points.size());
    copy.faces.reserve(mesh.faces.size());
    for (const Point& point : mesh.points)
        copy.points.emplace_back(point[0], point[1], point[2]);
    for (const Face& face : mesh.faces)
        copy.faces.emplace_back(face[0], face[1], face[2]);
    return copy;
}

struct ClusterLimits {
    double concavity;  // in thousandths of the mesh's size
    std::size_t fewest;
};

// The faces of `mesh` in clusters that are nearly convex. The library joins neighbours until a cluster would
// be deeper than the concavity, or the fewest clusters are left.
Clusters cluster(const TriangleMesh& mesh, const ClusterLimits& limits) {
    LibraryMesh input = libraryMeshOf(mesh);
    HACD::HACD library;
    library.SetPoints(input.points.data());
    library.SetNPoints(input.points.size());
    library.SetTriangles(input.faces.data());
    library.SetNTriangles(input.faces.size());
    library.SetScaleFactor(1000);
    library.SetCompacityWeight(0.1);
    library.SetVolumeWeight(0);
    library.SetConcavity(limits.concavity);
    library.SetNClusters(limits.fewest);
    library.SetNVerticesPerCH(8);  // its own hulls are not used
    library.SetConnectDist(-1);    // it compares all pairs of points; what is apart is joined here
    library.SetAddExtraDistPoints(true);
    library.SetAddNeighboursDistPoints(true);
    library.SetAddFacesPoints(true);
    if (!library.Compute()) return {mesh.faces};
    Clusters clusters(library.GetNClusters());
    for (std::size_t i = 0; i < mesh.faces.size(); ++i)
        clusters.at(static_cast<std::size_t>(library.GetPartition()[i])).push_back(mesh.faces[i]);
    return clusters;
}

// Joins clusters by their boxes, two at a time, those first whose common box is the least larger than theirs.
// Each remembers its best partner, so that joining n clusters takes about n² steps.
class ClusterJoiner {
  public:
    ClusterJoiner(const TriangleMesh& mesh, Clusters clusters) {
        for (Faces& faces : clusters) {
            Node node{std::move(faces), {}, 0, 0};
            for (const Face& face : node.faces) {
                for (const std::uint32_t i : face)
                    node.box.extend(Eigen::Vector3f(mesh.points[i][0], mesh.points[i][1], mesh.points[i][2]));
            }
            nodes_.push_back(std::move(node));
        }
    }

    Clusters joinTo(std::size_t most) && {
        if (nodes_.size() > most) {
            for (std::size_t i = 0; i < nodes_.size(); ++i)
                findPartner(i);
        }
        while (nodes_.size() > most)
            joinBest();
        Clusters clusters;
        for (Node& node : nodes_)
            clusters.push_back(std::move(node.faces));
        return clusters;
    }

  private:
    struct Node {
        Faces faces;
        Eigen::AlignedBox3f box;
        std::size_t partner;
        float cost;
    };

    static float area(const Eigen::AlignedBox3f& box) {
        const Eigen::Vector3f size = box.sizes();
        return size.x() * size.y() + size.y() * size.z() + size.z() * size.x();
    }

    float costOf(std::size_t a, std::size_t b) const {
        return area(nodes_[a].box.merged(nodes_[b].box)) - area(nodes_[a].box) - area(nodes_[b].box);
    }

    void findPartner(std::size_t i) {
        nodes_[i].cost = std::numeric_limits<float>::infinity();
        for (std::size_t k = 0; k < nodes_.size(); ++k) {
            if (k == i) continue;
            const float cost = costOf(i, k);
            if (cost >= nodes_[i].cost) continue;
            nodes_[i].cost = cost;
            nodes_[i].partner = k;
        }
    }

    void joinBest() {
        const auto best = std::min_element(nodes_.begin(), nodes_.end(),
                                           [](const Node& a, const Node& b) { return a.cost < b.cost; });
        const auto [low, high] = std::minmax(static_cast<std::size_t>(best - nodes_.begin()), best->partner);
        const std::size_t kept = low;
        const std::size_t gone = high;
        nodes_[kept].faces.insert(nodes_[kept].faces.end(), nodes_[gone].faces.begin(),
                                  nodes_[gone].faces.end());
        nodes_[kept].box.extend(nodes_[gone].box);
        const std::size_t last = nodes_.size() - 1;
        std::swap(nodes_[gone], nodes_[last]);
        nodes_.pop_back();
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            const std::size_t partner = nodes_[i].partner;
            if (i == kept || partner == kept || partner == gone) {
                findPartner(i);
            } else {
                if (partner == last) nodes_[i].partner = gone;
                if (const float cost = costOf(i, kept); cost < nodes_[i].cost) {
                    nodes_[i].cost = cost;
                    nodes_[i].partner = kept;
                }
            }
        }
    }

    std::vector<Node> nodes_;
};

// Clusters of parts that are nearly convex; where these are more than allowed, deeper ones.
Clusters clustersFor(const TriangleMesh& mesh, std::size_t most) {
    constexpr double kConcavity = 20;
    constexpr double kAnyConcavity = 1e9;
    Clusters clusters = cluster(mesh, {kConcavity, 1});
    if (clusters.size() > most) clusters = cluster(mesh, {kAnyConcavity, most});
    return ClusterJoiner(mesh, std::move(clusters)).joinTo(most);
}

}  // namespace

std::vector<Faces> convexParts(const TriangleMesh& unit, const DecompositionLimits& limits) {
    const std::size_t resolution = std::min(limits.resolution, kFinestResolution);
    const TriangleMesh coarse{unit.points, reduceTo(unit, resolution)};
    std::vector<Faces> parts;
    for (const Faces& cluster : clustersFor(coarse, limits.mostHulls)) {
        Faces hull = convexHull(unit.points, cornersOf(cluster));
        if (!hull.empty()) parts.push_back(std::move(hull));
    }
    if (parts.empty()) parts.push_back(convexHull(unit.points, cornersOf(unit.faces)));
    return parts;
}

}  // namespace velinor
