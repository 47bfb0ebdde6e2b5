#include "tools/meshprocessor/convex_parts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "tools/meshprocessor/concavity_clusters.h"
#include "tools/meshprocessor/convex_hull.h"
#include "tools/meshprocessor/decimate.h"
#include "tools/meshprocessor/deviation.h"

namespace velinor {
namespace {

// How deep a dent a part may hide, as a fraction of the extent.
constexpr double kConcavity = 0.02;

// Whether one hull is as good as several.
bool isNearlyConvex(const TriangleMesh& mesh, const Faces& piece) {
    constexpr std::size_t kPlaces = 50'000;
    const TriangleMesh alone{mesh.points, piece};
    const Faces hull = convexHull(mesh.points, cornersOf(piece));
    return hull.empty() || DeviationMeter(alone, kPlaces).betweenSolids({hull}) <= kConcavity;
}

// One piece that hangs together, in at most `most` clusters. First as many as the concavity asks for; where
// these are too many, deeper ones. What the library cannot do, or not in time, is cut at the middle instead.
Clusters splitPiece(const TriangleMesh& mesh, const Faces& piece, std::size_t most) {
    constexpr double kAnyConcavity = 1e6;
    if (most == 1 || isNearlyConvex(mesh, piece)) return {piece};
    if (piece.size() > kFinestResolution) return splitBySpace(mesh, piece, most);
    std::optional<Clusters> clusters = concavityClusters(mesh, piece, {kConcavity, 1});
    if (clusters && clusters->size() > most) clusters = concavityClusters(mesh, piece, {kAnyConcavity, most});
    return clusters ? *std::move(clusters) : splitBySpace(mesh, piece, most);
}

// Every piece gets its share of the clusters that are left over when each has one.
Clusters clustersOf(const TriangleMesh& mesh, std::size_t most) {
    Clusters pieces = connectedPieces(mesh.faces);
    if (pieces.size() >= most) return joinByBoxes(mesh, std::move(pieces), most);
    const std::size_t spare = most - pieces.size();
    Clusters clusters;
    for (const Faces& piece : pieces) {
        const std::size_t share = spare * piece.size() / mesh.faces.size();
        Clusters split = splitPiece(mesh, piece, 1 + share);
        clusters.insert(clusters.end(), std::make_move_iterator(split.begin()),
                        std::make_move_iterator(split.end()));
    }
    return joinByBoxes(mesh, std::move(clusters), most);
}

}  // namespace

std::vector<Faces> convexParts(const TriangleMesh& unit, const DecompositionLimits& limits) {
    const TriangleMesh coarse{unit.points, reduceTo(unit, std::min(limits.resolution, kFinestResolution))};
    std::vector<Faces> parts;
    for (const Faces& cluster : clustersOf(coarse, limits.mostHulls)) {
        Faces hull = convexHull(unit.points, cornersOf(cluster));
        if (!hull.empty()) parts.push_back(std::move(hull));
    }
    if (parts.empty()) throw MeshError("all faces of the mesh lie on lines; they have no hull");
    return parts;
}

}  // namespace velinor
