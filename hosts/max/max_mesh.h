// Triangle meshes of 3ds Max.
#pragma once

#include "hosts/max/max_sdk.h"

#include <map>
#include <vector>

#include "host/mesh.h"

namespace velinor {

// A mesh in the exporter's layout. The faces and positions are copies, in which an index of a vertex that
// does not exist is 0: damaged scenes have such. The SDK's mesh outlives this one.
class MaxMesh final : public host::Mesh {
  public:
    explicit MaxMesh(::Mesh& mesh);

    void buildNormals() override;
    std::span<const host::Face> faces() const override { return faces_; }
    std::span<const host::Point3> verts() const override { return verts_; }
    int getNumMaps() const override { return mesh_.getNumMaps(); }
    bool mapSupport(int channel) const override;
    std::span<const host::TVFace> mapFaces(int channel) const override { return channelOf(channel).faces; }
    std::span<const host::UVVert> mapVerts(int channel) const override { return channelOf(channel).verts; }
    host::RVertex getRVertex(std::uint32_t vertex) const override;
    host::Point3 getFaceNormal(std::uint32_t face) const override;

  private:
    struct Channel {
        std::vector<host::TVFace> faces;
        std::vector<host::UVVert> verts;
    };
    // Where a vertex's normals are in the list of all.
    struct VertexNormals {
        std::uint32_t flags = 0;
        std::size_t first = 0;
        std::size_t count = 0;
    };

    const Channel& channelOf(int channel) const;
    Channel readChannel(int channel) const;
    VertexNormals readNormals(int vertex);

    ::Mesh& mesh_;
    std::vector<host::Face> faces_;
    std::vector<host::Point3> verts_;
    mutable std::map<int, Channel> channels_;  // those that were asked for
    std::vector<host::RNormal> normals_;
    std::vector<VertexNormals> vertexNormals_;
};

}  // namespace velinor
