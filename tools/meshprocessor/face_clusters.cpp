#include "tools/meshprocessor/face_clusters.h"

#include <Eigen/Geometry>
#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <utility>

#include "tools/meshprocessor/face_sides.h"
#include "tools/meshprocessor/point_vector.h"

namespace velinor {
namespace {

using Box = Eigen::AlignedBox3f;

Box boxOf(const TriangleMesh& mesh, const Faces& faces) {
    Box box;
    for (const Face& face : faces) {
        for (const std::uint32_t corner : face)
            box.extend(vectorOf(mesh.points[corner]));
    }
    return box;
}

Eigen::Vector3f centreOf(const TriangleMesh& mesh, const Face& face) {
    return (vectorOf(mesh.points[face[0]]) + vectorOf(mesh.points[face[1]]) +
            vectorOf(mesh.points[face[2]])) /
           3;
}

// Sets of numbers that grow together.
class DisjointSets {
  public:
    explicit DisjointSets(std::size_t size) : parent_(size) { std::iota(parent_.begin(), parent_.end(), 0U); }

    std::uint32_t find(std::uint32_t i) {
        for (; parent_[i] != i; i = parent_[i])
            parent_[i] = parent_[parent_[i]];
        return i;
    }
    void join(std::uint32_t a, std::uint32_t b) {
        const auto [low, high] = std::minmax({find(a), find(b)});
        parent_[high] = low;
    }

  private:
    std::vector<std::uint32_t> parent_;
};

// Cuts at the middle of the longest side of the box of the faces' centres.
std::pair<Faces, Faces> cutAtMiddle(const TriangleMesh& mesh, const Faces& faces) {
    Box centres;
    for (const Face& face : faces)
        centres.extend(centreOf(mesh, face));
    Eigen::Index axis = 0;
    centres.sizes().maxCoeff(&axis);
    const float middle = centres.center()[axis];
    std::pair<Faces, Faces> halves;
    for (const Face& face : faces)
        (centreOf(mesh, face)[axis] < middle ? halves.first : halves.second).push_back(face);
    return halves;
}

// Joins clusters by their boxes, two at a time, those first whose common box is the least larger than theirs.
// Each remembers its best partner, so that joining n clusters takes about n² steps.
class ClusterJoiner {
  public:
    ClusterJoiner(const TriangleMesh& mesh, Clusters clusters) {
        for (Faces& faces : clusters) {
            const Box box = boxOf(mesh, faces);
            nodes_.push_back({std::move(faces), box, 0, 0});
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
        Box box;
        std::size_t partner;
        float cost;
    };

    static float area(const Box& box) {
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
        const auto [kept, gone] =
            std::minmax({static_cast<std::size_t>(best - nodes_.begin()), best->partner});
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

// Clusters whose centres are in the same cell of a grid over all, put together.
Clusters joinInCells(const TriangleMesh& mesh, Clusters clusters) {
    constexpr int kCells = 14;  // along each axis
    using Cell = std::array<int, 3>;
    const auto cellOf = [](const Eigen::Vector3f& place, const Box& all) {
        Cell cell{};
        for (int axis = 0; axis < 3; ++axis) {
            const float size = all.sizes()[axis];
            const float share = size > 0 ? (place[axis] - all.min()[axis]) / size : 0.0F;
            cell[static_cast<std::size_t>(axis)] = std::min(static_cast<int>(share * kCells), kCells - 1);
        }
        return cell;
    };
    std::vector<Box> boxes;
    Box all;
    for (const Faces& faces : clusters) {
        boxes.push_back(boxOf(mesh, faces));
        all.extend(boxes.back());
    }
    std::map<Cell, Faces> cells;
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        Faces& faces = cells[cellOf(boxes[i].center(), all)];
        faces.insert(faces.end(), clusters[i].begin(), clusters[i].end());
    }
    clusters.clear();
    for (auto& [cell, faces] : cells)
        clusters.push_back(std::move(faces));
    return clusters;
}

}  // namespace

Clusters connectedPieces(const Faces& faces) {
    DisjointSets sets(faces.size());
    forEachEdge(sidesByEdge(faces), [&sets](auto begin, auto end) {
        for (auto side = begin + 1; side != end; ++side)
            sets.join(begin->face, side->face);
    });
    Clusters pieces;
    std::vector<std::size_t> pieceOf(faces.size());
    for (std::uint32_t i = 0; i < faces.size(); ++i) {
        const std::uint32_t first = sets.find(i);  // the lowest of its set
        if (first == i) {
            pieceOf[i] = pieces.size();
            pieces.emplace_back();
        }
        pieces[pieceOf[first]].push_back(faces[i]);
    }
    return pieces;
}

Clusters splitBySpace(const TriangleMesh& mesh, const Faces& faces, std::size_t most) {
    Clusters clusters{faces};
    std::vector<float> sizes{boxOf(mesh, faces).diagonal().norm()};
    while (clusters.size() < most) {
        const auto largest = std::max_element(sizes.begin(), sizes.end());
        const auto i = static_cast<std::size_t>(largest - sizes.begin());
        auto [low, high] = cutAtMiddle(mesh, clusters[i]);
        if (low.empty() || high.empty()) break;
        sizes[i] = boxOf(mesh, low).diagonal().norm();
        sizes.push_back(boxOf(mesh, high).diagonal().norm());
        clusters[i] = std::move(low);
        clusters.push_back(std::move(high));
    }
    return clusters;
}

Clusters joinByBoxes(const TriangleMesh& mesh, Clusters clusters, std::size_t most) {
    constexpr std::size_t kManyClusters = 3000;
    if (clusters.size() > kManyClusters) clusters = joinInCells(mesh, std::move(clusters));
    return ClusterJoiner(mesh, std::move(clusters)).joinTo(most);
}

}  // namespace velinor
