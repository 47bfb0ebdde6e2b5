#include "geometry/mesh_geometry.h"

#include <algorithm>
#include <utility>

#include "geometry/vertex_normal.h"
#include "geometry/vertex_welder.h"
#include "scene/transform.h"

namespace velinor {
namespace {

constexpr int kFirstChannel = 1;

// One map channel with coordinates for each corner.
struct Channel {
    std::span<const host::TVFace> faces;
    std::span<const host::UVVert> vertices;

    TexCoord at(std::size_t face, std::size_t corner) const {
        const host::UVVert& vertex = vertices[faces[face].t[corner]];
        return {vertex.x, 1 - vertex.y};
    }
};

bool hasTexCoords(const host::Mesh& mesh, int channel) {
    return channel == kFirstChannel ? !mesh.mapVerts(channel).empty() && !mesh.mapFaces(channel).empty()
                                    : mesh.mapSupport(channel) && !mesh.mapFaces(channel).empty();
}

// Gives the corners of a mesh one after the other.
class Corners {
  public:
    Corners(const host::Mesh& mesh, const TexCoordLayout& layout)
        : mesh_(mesh), vertices_(mesh.verts()), texCoords_(layout.stored.size()) {
        for (const int channel : layout.stored)
            channels_.push_back({mesh.mapFaces(channel), mesh.mapVerts(channel)});
    }

    // Valid until the next call.
    MeshVertex at(const host::Face& face, std::uint32_t number, std::size_t corner) {
        const std::uint32_t vertex = face.v[corner];
        for (std::size_t i = 0; i < channels_.size(); ++i)
            texCoords_[i] = channels_[i].at(number, corner);
        const host::Point3 normal = vertexNormal(mesh_, mesh_.getRVertex(vertex), number, face.smGroup);
        return {toPackagePoint(vertices_[vertex]), Normalize(toPackagePoint(normal)), texCoords_};
    }

  private:
    const host::Mesh& mesh_;
    std::span<const host::Point3> vertices_;
    std::vector<Channel> channels_;
    std::vector<TexCoord> texCoords_;
};

// Sorts faces by submesh. Neighbouring faces mostly share one, so it is looked up only where the ID changes.
class SubmeshSorter {
  public:
    SubmeshSorter(const MeshMaterials& materials, MeshGeometry& geometry)
        : materials_(materials), geometry_(geometry) {}

    void add(const host::Face& face, std::uint32_t number) {
        if (faces_ == nullptr || face.getMatID() != id_) {
            id_ = face.getMatID();
            faces_ = &geometry_.submeshFaces[materials_.submeshOf(id_)];
        }
        faces_->push_back(number);
    }

  private:
    const MeshMaterials& materials_;
    MeshGeometry& geometry_;
    std::uint16_t id_ = 0;
    std::vector<std::uint32_t>* faces_ = nullptr;
};

}  // namespace

TexCoordLayout texCoordLayoutOf(const host::Mesh& mesh) {
    const int channelCount = mesh.getNumMaps();
    TexCoordLayout layout;
    const auto write = [&](int channel) {
        const bool isStored = hasTexCoords(mesh, channel);
        layout.written.push_back(isStored ? static_cast<int>(layout.stored.size()) : TexCoordLayout::kZero);
        if (isStored) layout.stored.push_back(channel);
    };
    if (!mesh.mapVerts(kFirstChannel).empty() || channelCount >= 2) write(kFirstChannel);
    for (int channel = kFirstChannel + 1; channel < channelCount; ++channel)
        write(channel);
    return layout;
}

MeshGeometry weldMesh(const host::Mesh& mesh, const MeshMaterials& materials, StepProgress& progress) {
    TexCoordLayout layout = texCoordLayoutOf(mesh);
    const std::span<const host::Face> faces = mesh.faces();
    Corners corners(mesh, layout);
    VertexWelder welder(layout.stored.size(), std::min(mesh.verts().size(), 3 * faces.size()));
    MeshGeometry geometry{std::move(layout), VertexList(0), {}, {}};
    SubmeshSorter sorter(materials, geometry);
    geometry.faces.resize(faces.size());
    for (std::uint32_t f = 0; f < faces.size(); ++f) {
        auto& indices = geometry.faces[f].indices;
        for (std::size_t corner = 0; corner < indices.size(); ++corner)
            indices[corner] = welder.weld(corners.at(faces[f], f, corner));
        sorter.add(faces[f], f);
        progress.step();
    }
    geometry.vertexList = welder.takeVertexList();
    return geometry;
}

}  // namespace velinor
