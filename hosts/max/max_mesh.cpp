#include "hosts/max/max_mesh.h"

#include <algorithm>
#include <array>

#include "hosts/max/max_values.h"

namespace velinor {
namespace {

constexpr int kFirstTextureChannel = 1;

// The three indices of a face, each below `count`, which is not 0.
std::array<std::uint32_t, 3> indicesBelow(std::size_t count, const DWORD (&indices)[3]) {
    std::array<std::uint32_t, 3> result{};
    std::ranges::transform(indices, result.begin(), [count](DWORD index) {
        return index < count ? static_cast<std::uint32_t>(index) : 0U;
    });
    return result;
}

std::vector<host::Point3> readPoints(const ::Point3* points, int count) {
    std::vector<host::Point3> result;
    if (points == nullptr || count <= 0) return result;
    result.reserve(static_cast<std::size_t>(count));
    std::transform(points, points + count, std::back_inserter(result), hostPoint);
    return result;
}

// Without vertices there is no face.
std::vector<host::Face> readFaces(const ::Mesh& mesh, std::size_t vertexCount) {
    std::vector<host::Face> faces;
    const int count = mesh.getNumFaces();
    if (mesh.faces == nullptr || count <= 0 || vertexCount == 0) return faces;
    faces.reserve(static_cast<std::size_t>(count));
    std::transform(mesh.faces, mesh.faces + count, std::back_inserter(faces), [&](const ::Face& face) {
        return host::Face{indicesBelow(vertexCount, face.v), static_cast<std::uint32_t>(face.smGroup),
                          static_cast<std::uint32_t>(face.flags)};
    });
    return faces;
}

}  // namespace

MaxMesh::MaxMesh(::Mesh& mesh) : mesh_(mesh), verts_(readPoints(mesh.verts, mesh.getNumVerts())) {
    faces_ = readFaces(mesh, verts_.size());
}

void MaxMesh::buildNormals() {
    mesh_.buildNormals();
    normals_.clear();
    vertexNormals_.clear();
    vertexNormals_.reserve(verts_.size());
    for (std::size_t i = 0; i < verts_.size(); ++i)
        vertexNormals_.push_back(readNormals(static_cast<int>(i)));
}

MaxMesh::VertexNormals MaxMesh::readNormals(int vertex) {
    ::RVertex* source = mesh_.getRVertPtr(vertex);
    if (source == nullptr) return {};
    VertexNormals read{static_cast<std::uint32_t>(source->rFlags), normals_.size(), 0};
    const auto add = [&](::RNormal& normal) {
        normals_.push_back({hostPoint(normal.getNormal()), static_cast<std::uint32_t>(normal.getSmGroup())});
        ++read.count;
    };
    const std::uint32_t count = read.flags & max::kNormalCountMask;
    if (count == 1 || (read.flags & max::kSpecifiedNormal) != 0) {
        add(source->rn);
    } else if (count > 1 && source->ern != nullptr) {
        std::for_each_n(source->ern, count, add);
    } else {
        read.flags &= ~static_cast<std::uint32_t>(max::kNormalCountMask);
    }
    return read;
}

// Channel 1 has members of its own; it is there where it has vertices.
bool MaxMesh::mapSupport(int channel) const {
    return channel == kFirstTextureChannel ? mesh_.getNumTVerts() > 0 : mesh_.mapSupport(channel) != 0;
}

const MaxMesh::Channel& MaxMesh::channelOf(int channel) const {
    const auto found = channels_.find(channel);
    return found == channels_.end() ? channels_.emplace(channel, readChannel(channel)).first->second
                                    : found->second;
}

MaxMesh::Channel MaxMesh::readChannel(int channel) const {
    const bool isFirst = channel == kFirstTextureChannel;
    if (!isFirst && (channel < kFirstTextureChannel || mesh_.mapSupport(channel) == 0)) return {};
    Channel read;
    read.verts = isFirst ? readPoints(mesh_.tVerts, mesh_.getNumTVerts())
                         : readPoints(mesh_.mapVerts(channel), mesh_.getNumMapVerts(channel));
    const ::TVFace* faces = isFirst ? mesh_.tvFace : mesh_.mapFaces(channel);
    if (faces == nullptr || read.verts.empty()) return read;
    read.faces.reserve(faces_.size());
    std::transform(faces, faces + faces_.size(), std::back_inserter(read.faces), [&](const ::TVFace& face) {
        return host::TVFace{indicesBelow(read.verts.size(), face.t)};
    });
    return read;
}

host::RVertex MaxMesh::getRVertex(std::uint32_t vertex) const {
    if (vertex >= vertexNormals_.size()) return {};
    const VertexNormals& read = vertexNormals_[vertex];
    return {read.flags, std::span(normals_).subspan(read.first, read.count)};
}

host::Point3 MaxMesh::getFaceNormal(std::uint32_t face) const {
    return hostPoint(mesh_.getFaceNormal(static_cast<int>(face)));
}

}  // namespace velinor
