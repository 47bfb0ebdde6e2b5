#include "hosts/snapshot/snapshot_host_mesh.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "hosts/snapshot/render_normals.h"

namespace velinor {
namespace {

using host::Face;
using host::Point3;
using host::TVFace;

constexpr std::int32_t kFewestMapChannels = 2;

std::vector<Face> makeFaces(const SnapshotMesh& mesh) {
    std::vector<Face> faces(mesh.faces.size());
    for (std::size_t f = 0; f < faces.size(); ++f) {
        const std::uint32_t materialId = mesh.materialIds.empty() ? 0 : mesh.materialIds[f];
        faces[f] = {mesh.faces[f], mesh.smoothing.empty() ? 0 : mesh.smoothing[f], materialId << 16U};
    }
    return faces;
}

std::vector<TVFace> makeMapFaces(const std::vector<FaceIndices>& indices) {
    std::vector<TVFace> faces;
    faces.reserve(indices.size());
    for (const FaceIndices& face : indices)
        faces.push_back({face});
    return faces;
}

class SnapshotHostMesh final : public host::Mesh {
  public:
    explicit SnapshotHostMesh(const SnapshotMesh& mesh) : mesh_(mesh), faces_(makeFaces(mesh)) {
        for (const auto& [number, channel] : mesh.maps)
            mapFaces_.emplace(number, makeMapFaces(channel.faces));
    }

    void buildNormals() override { normals_.emplace(mesh_); }

    std::span<const Face> faces() const override { return faces_; }
    std::span<const Point3> verts() const override { return mesh_.vertices; }

    int getNumMaps() const override {
        if (mesh_.mapChannels) return *mesh_.mapChannels;
        return mesh_.maps.empty() ? kFewestMapChannels
                                  : std::max(kFewestMapChannels, mesh_.maps.rbegin()->first + 1);
    }

    bool mapSupport(int channel) const override { return !mapVerts(channel).empty(); }

    std::span<const TVFace> mapFaces(int channel) const override {
        const auto found = mapFaces_.find(channel);
        return found == mapFaces_.end() ? std::span<const TVFace>() : found->second;
    }

    std::span<const host::UVVert> mapVerts(int channel) const override {
        const auto found = mesh_.maps.find(channel);
        return found == mesh_.maps.end() ? std::span<const host::UVVert>() : found->second.vertices;
    }

    // Without normals before buildNormals.
    host::RVertex getRVertex(std::uint32_t vertex) const override {
        if (!normals_) return {};
        const auto normals = normals_->of(vertex);
        const std::uint32_t flag = normals_->isSpecified(vertex) ? host::RVertex::SPECIFIED_NORMAL : 0;
        const auto count = std::min<std::size_t>(normals.size(), host::RVertex::NORCT_MASK);
        return {static_cast<std::uint32_t>(count) | flag, normals};
    }

    Point3 getFaceNormal(std::uint32_t face) const override { return faceNormal(mesh_, face); }

  private:
    const SnapshotMesh& mesh_;
    std::vector<Face> faces_;
    std::map<std::int32_t, std::vector<TVFace>> mapFaces_;
    std::optional<RenderNormals> normals_;
};

}  // namespace

std::unique_ptr<host::Mesh> makeHostMesh(const SnapshotMesh& mesh) {
    return std::make_unique<SnapshotHostMesh>(mesh);
}

}  // namespace velinor
