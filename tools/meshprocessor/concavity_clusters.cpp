#include "tools/meshprocessor/concavity_clusters.h"

#include <hacdHACD.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/isolated_run.h"

namespace velinor {
namespace {

// What the library gets. The corners of the faces count within the points.
struct LibraryInput {
    ClusterLimits limits{};
    std::vector<Point> points;
    std::vector<Face> faces;
};

LibraryInput libraryInputOf(const TriangleMesh& mesh, const Faces& faces, const ClusterLimits& limits) {
    const std::vector<std::uint32_t> corners = cornersOf(faces);
    const auto numberOf = [&corners](std::uint32_t corner) {
        return static_cast<std::uint32_t>(std::lower_bound(corners.begin(), corners.end(), corner) -
                                          corners.begin());
    };
    LibraryInput input{limits, {}, {}};
    input.points.reserve(corners.size());
    input.faces.reserve(faces.size());
    for (const std::uint32_t corner : corners)
        input.points.push_back(mesh.points[corner]);
    for (const Face& face : faces)
        input.faces.push_back({numberOf(face[0]), numberOf(face[1]), numberOf(face[2])});
    return input;
}

// Values one after the other as they lie in memory: both processes are of one program.
template <typename Value>
void append(std::string& bytes, const Value* values, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<Value>);
    bytes.append(reinterpret_cast<const char*>(values), count * sizeof(Value));
}

template <typename Value>
void take(std::string_view& bytes, Value* values, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<Value>);
    bytes.copy(reinterpret_cast<char*>(values), count * sizeof(Value));
    bytes.remove_prefix(count * sizeof(Value));
}

std::string bytesOf(const LibraryInput& input) {
    const std::uint64_t pointCount = input.points.size();
    std::string bytes;
    append(bytes, &input.limits, 1);
    append(bytes, &pointCount, 1);
    append(bytes, input.points.data(), input.points.size());
    append(bytes, input.faces.data(), input.faces.size());
    return bytes;
}

LibraryInput libraryInputOf(std::string_view bytes) {
    LibraryInput input;
    std::uint64_t pointCount = 0;
    take(bytes, &input.limits, 1);
    take(bytes, &pointCount, 1);
    input.points.resize(static_cast<std::size_t>(pointCount));
    take(bytes, input.points.data(), input.points.size());
    input.faces.resize(bytes.size() / sizeof(Face));
    take(bytes, input.faces.data(), input.faces.size());
    return input;
}

using ClusterNumbers = std::vector<std::uint32_t>;  // one for each face

// Nothing where the library says that it failed.
ClusterNumbers runLibrary(const LibraryInput& input) {
    constexpr double kScale = 1000;  // the size that the library gives the mesh, and the unit of concavity
    std::vector<HACD::Vec3<HACD::Real>> points;  // the library changes them while it runs
    std::vector<HACD::Vec3<long>> faces;
    for (const auto& [x, y, z] : input.points)
        points.emplace_back(x, y, z);
    for (const Face& face : input.faces)
        faces.emplace_back(face[0], face[1], face[2]);
    HACD::HACD library;
    library.SetPoints(points.data());
    library.SetNPoints(points.size());
    library.SetTriangles(faces.data());
    library.SetNTriangles(faces.size());
    library.SetScaleFactor(kScale);
    library.SetCompacityWeight(0.1);
    library.SetVolumeWeight(0);
    library.SetConcavity(input.limits.concavity * kScale);
    library.SetNClusters(input.limits.fewest);
    library.SetNVerticesPerCH(8);  // its own hulls are not used
    library.SetConnectDist(-1);    // it would compare all pairs of points
    library.SetAddExtraDistPoints(true);
    library.SetAddNeighboursDistPoints(true);
    library.SetAddFacesPoints(true);
    if (!library.Compute()) return {};
    const long* partition = library.GetPartition();
    return {partition, partition + faces.size()};
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

// Runs in a process of its own.
void cluster(std::string_view input, const SendMessage& send) {
    send(bytesOf(runLibrary(libraryInputOf(input))));
}

const IsolatedWork kCluster("cluster-faces", cluster);

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
        kCluster, bytesOf(libraryInputOf(mesh, faces, limits)),
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
