// The triangle mesh of an object, as the host evaluates it. Positions and normals are in object space.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "host/geometry.h"

namespace velinor::host {

struct Face {
    std::array<std::uint32_t, 3> v{};  // vertex indices of corners 0, 1, 2
    std::uint32_t smGroup = 0;         // smoothing groups, one bit each
    std::uint32_t flags = 0;           // the material ID in the upper 16 bits

    std::uint16_t getMatID() const { return static_cast<std::uint16_t>(flags >> 16U); }
    bool operator==(const Face&) const = default;
};

// The corners of a face in a map channel: indices into the channel's vertices.
struct TVFace {
    std::array<std::uint32_t, 3> t{};

    bool operator==(const TVFace&) const = default;
};

// A texture coordinate; v points up.
using UVVert = Point3;

// One of a render vertex's normals, with the smoothing groups of the faces that share it.
struct RNormal {
    Point3 normal;
    std::uint32_t smGroup = 0;

    bool operator==(const RNormal&) const = default;
};

// The normals of one vertex.
struct RVertex {
    static constexpr std::uint32_t NORCT_MASK = 0x000000FF;        // the number of normals
    static constexpr std::uint32_t SPECIFIED_NORMAL = 0x00004000;  // the one normal was set by hand

    std::uint32_t rFlags = 0;
    // As many as the flags count, at least one where SPECIFIED_NORMAL is set. Valid as long as the mesh.
    std::span<const RNormal> normals;
};

// A triangle mesh. Spans and pointers stay valid as long as the mesh.
class Mesh {
  public:
    virtual ~Mesh() = default;

    // Builds the normals that getRVertex and getFaceNormal give. To be called once before either.
    virtual void buildNormals() = 0;

    // Every vertex index of a face is below the number of vertices.
    virtual std::span<const Face> faces() const = 0;
    virtual std::span<const Point3> verts() const = 0;

    // The number of map channels, channel 0 (vertex colours) counted.
    virtual int getNumMaps() const = 0;

    // Whether the channel, 1 and up, holds texture coordinates.
    virtual bool mapSupport(int channel) const = 0;

    // The channel's faces, one for each face of the mesh or none at all, and its vertices. Every index of a
    // face is below the number of vertices.
    virtual std::span<const TVFace> mapFaces(int channel) const = 0;
    virtual std::span<const UVVert> mapVerts(int channel) const = 0;

    virtual RVertex getRVertex(std::uint32_t vertex) const = 0;

    // The unit normal (v1 - v0) x (v2 - v1) of a face; zero for a face without area.
    virtual Point3 getFaceNormal(std::uint32_t face) const = 0;
};

}  // namespace velinor::host
