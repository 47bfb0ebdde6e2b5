#include "tools/meshprocessor/collision_shapes.h"

#include <utility>

#include "base/text.h"
#include "tools/meshprocessor/convex_hull.h"
#include "tools/meshprocessor/deviation.h"
#include "tools/meshprocessor/ogre_xml_reader.h"
#include "tools/meshprocessor/orientation.h"
#include "tools/meshprocessor/unit_mesh.h"
#include "tools/meshprocessor/weld.h"

namespace velinor {
namespace {

CollisionShapes oneMesh(const TriangleMesh& unit, Faces faces, std::optional<float> deviation) {
    orientOutward(unit.points, faces);
    return {{Shape{"mesh", std::move(faces)}}, deviation};
}

CollisionShapes convexOnes(std::vector<Faces> parts, DeviationMeter& meter) {
    CollisionShapes result;
    result.deviation = meter.betweenSolids(parts);
    for (Faces& part : parts)
        result.shapes.push_back({"part_" + std::to_string(result.shapes.size() + 1), std::move(part)});
    return result;
}

// One function for each choice.
struct MakeShapes {
    const TriangleMesh& unit;

    CollisionShapes operator()(const TakeAsItIs&) const { return oneMesh(unit, unit.faces, std::nullopt); }
    CollisionShapes operator()(const DecimationLimits& limits) const {
        DeviationMeter meter(unit);
        Decimation result = decimate(unit, limits, meter);
        return oneMesh(unit, std::move(result.faces), result.deviation);
    }
    CollisionShapes operator()(const DecompositionLimits& limits) const {
        DeviationMeter meter(unit);
        return convexOnes(convexParts(unit, limits), meter);
    }
    CollisionShapes operator()(const TakeConvexHull&) const {
        DeviationMeter meter(unit);
        Faces hull = convexHull(unit.points, cornersOf(unit.faces));
        if (hull.empty()) throw MeshError("all faces of the mesh lie on lines; they have no hull");
        return convexOnes({std::move(hull)}, meter);
    }
};

MeshCounts countsOf(const std::vector<Shape>& shapes) {
    MeshCounts counts;
    for (const Shape& shape : shapes) {
        counts.faces += shape.faces.size();
        counts.vertices += cornersOf(shape.faces).size();
    }
    return counts;
}

void checkNotSame(const ProcessorOptions& options) {
    std::error_code error;
    if (std::filesystem::equivalent(options.input, options.output, error))
        throw UsageError("-import and -saveCollisionShapes name the same file; give OUT another name");
}

}  // namespace

CollisionShapes collisionShapes(const TriangleMesh& welded, const ShapeChoice& choice) {
    TriangleMesh unit = toUnitMesh(welded);
    // Closed parts face outward from here on: what is inside depends on it.
    orientOutward(unit.points, unit.faces);
    return std::visit(MakeShapes{unit}, choice);
}

ProcessorReport processMesh(const ProcessorOptions& options) {
    checkNotSame(options);
    TriangleMesh mesh = readOgreXml(options.input);
    ProcessorReport report;
    report.input = {mesh.faces.size(), mesh.points.size()};
    mesh = weld(mesh);
    CollisionShapes result;
    try {
        result = collisionShapes(mesh, options.shape);
    } catch (const MeshError& error) {
        throw MeshError(printable(utf8Path(options.input)) + ": " + error.what());
    }
    writeObj(options.output, mesh.points, result.shapes);
    report.output = countsOf(result.shapes);
    report.parts = result.shapes.size();
    report.deviation = result.deviation;
    return report;
}

}  // namespace velinor
