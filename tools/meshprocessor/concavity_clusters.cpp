#include "tools/meshprocessor/concavity_clusters.h"

#include <hacdHACD.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "platform/isolated_run.h"

namespace velinor {
namespace {

// What the library works on; it changes the points while it runs.
struct LibraryMesh {
    std::vector<HACD::Vec3<HACD::Real>> points;
    std::vector<HACD::Vec3<long>> faces;
};

LibraryMesh libraryMeshOf(const TriangleMesh& mesh, const Faces& faces) {
    const std::vector<std::uint32_t> corners = cornersOf(faces);
    const auto numberOf = [&corners](std::uint32_t corner) {
        return std::lower_bound(corners.begin(), corners.end(), corner) - corners.begin();
    };
    LibraryMesh copy;
    copy.points.reserve(corners.size());
    copy.faces.reserve(faces.size());
    for (const std::uint32_t corner : corners) {
        const auto& [x, y, z] = mesh.points[corner];
        copy.points.emplace_back(x, y, z);
    }
    for (const Face& face : faces)
        copy.faces.emplace_back(numberOf(face[0]), numberOf(face[1]), numberOf(face[2]));
    return copy;
}

using ClusterNumbers = std::vector<std::uint32_t>;  // one for each face

// Nothing where the library says that it failed.
ClusterNumbers runLibrary(LibraryMesh input, const ClusterLimits& limits) {
    constexpr double kScale = 1000;  // the size that the library gives the mesh, and the unit of concavity
    HACD::HACD library;
    library.SetPoints(input.points.data());
    library.SetNPoints(input.points.size());
    library.SetTriangles(input.faces.data());
    library.SetNTriangles(input.faces.size());
    library.SetScaleFactor(kScale);
    library.SetCompacityWeight(0.1);
    library.SetVolumeWeight(0);
    library.SetConcavity(limits.concavity * kScale);
    library.SetNClusters(limits.fewest);
    library.SetNVerticesPerCH(8);  // its own hulls are not used
    library.SetConnectDist(-1);    // it would compare all pairs of points
    library.SetAddExtraDistPoints(true);
    library.SetAddNeighboursDistPoints(true);
    library.SetAddFacesPoints(true);
    if (!library.Compute()) return {};
    const long* partition = library.GetPartition();
    return {partition, partition + input.faces.size()};
}

std::string bytesOf(const ClusterNumbers& numbers) {
    std::string bytes(numbers.size() * sizeof(ClusterNumbers::value_type), '\0');
    if (!bytes.empty()) std::memcpy(bytes.data(), numbers.data(), bytes.size());
    return bytes;
}

ClusterNumbers numbersOf(std::string_view bytes) {
    ClusterNumbers numbers(bytes.size() / sizeof(ClusterNumbers::value_type));
    if (!numbers.empty()) std::memcpy(numbers.data(), bytes.data(), bytes.size());
    return numbers;
}

bool isValid(const ClusterNumbers& numbers, std::size_t faceCount) {
    return numbers.size() == faceCount &&
           std::all_of(numbers.begin(), numbers.end(),
                       [faceCount](std::uint32_t number) { return number < faceCount; });
}

}  // namespace

std::optional<Clusters> concavityClusters(const TriangleMesh& mesh, const Faces& faces,
                                          const ClusterLimits& limits) {
    // An input of ordinary shape takes a few seconds and some 100 MB.
    constexpr IsolationLimits kIsolation{std::uint64_t{8} << 30U, 20};
    ClusterNumbers numbers;
    const IsolatedRun run = runIsolated(
        [&](const SendMessage& send) { send(bytesOf(runLibrary(libraryMeshOf(mesh, faces), limits))); },
        [&numbers](std::string_view message) { numbers = numbersOf(message); }, kIsolation);
    if (run.end != IsolatedRun::End::finished || !isValid(numbers, faces.size())) return std::nullopt;
    Clusters clusters;
    for (std::size_t i = 0; i < faces.size(); ++i) {
        clusters.resize(std::max<std::size_t>(clusters.size(), numbers[i] + std::size_t{1}));
        clusters[numbers[i]].push_back(faces[i]);
    }
    std::erase_if(clusters, [](const Faces& cluster) { return cluster.empty(); });
    return clusters;
}

}  // namespace velinor
