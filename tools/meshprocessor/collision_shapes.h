// From an Ogre XML mesh to a file of collision shapes.
#pragma once

#include <cstddef>
#include <optional>

#include "tools/meshprocessor/obj_writer.h"
#include "tools/meshprocessor/options.h"

namespace velinor {

struct MeshCounts {
    std::size_t faces = 0;
    std::size_t vertices = 0;

    bool operator==(const MeshCounts&) const = default;
};

struct CollisionShapes {
    std::vector<Shape> shapes;       // over the points of the welded mesh
    std::optional<float> deviation;  // as a fraction of the extent; none where the mesh is taken as it is
};

// The shapes of a welded mesh: "mesh", or "part_1" and so on where they are convex. Closed parts face
// outward. Throws MeshError where the mesh has no face with an area.
CollisionShapes collisionShapes(const TriangleMesh& welded, const ShapeChoice& choice);

// What was read and written.
struct ProcessorReport {
    MeshCounts input;
    MeshCounts output;
    std::size_t parts = 0;
    std::optional<float> deviation;
};

// Reads options.input and writes options.output, or throws MeshError and leaves no file. UsageError where
// both are one file.
ProcessorReport processMesh(const ProcessorOptions& options);

}  // namespace velinor
