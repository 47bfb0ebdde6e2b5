#include "tools/meshprocessor/decimate.h"

#include <meshoptimizer.h>

#include <algorithm>

namespace velinor {
namespace {

// What an exactly flat area loses by rounding.
constexpr double kRounding = 2e-6;

Faces simplified(const TriangleMesh& unit, std::size_t targetFaces, double error) {
    Faces faces(unit.faces.size());
    const std::size_t target = std::min(targetFaces, unit.faces.size()) * 3;
    const std::size_t count = meshopt_simplify(
        faces.front().data(), unit.faces.front().data(), unit.faces.size() * 3, unit.points.front().data(),
        unit.points.size(), sizeof(Point), target, static_cast<float>(error), 0, nullptr);
    faces.resize(count / 3);
    return faces;
}

bool isReducible(const Faces& faces, std::size_t points, const DecimationLimits& limits) {
    return faces.size() > limits.fewestFaces && points > limits.fewestVertices;
}

// How many faces below its limits a result is; 0 where it keeps them. A vertex goes with two faces.
std::size_t missingFaces(const Faces& faces, const DecimationLimits& limits) {
    const std::size_t points = cornersOf(faces).size();
    const std::size_t byFaces = limits.fewestFaces - std::min(limits.fewestFaces, faces.size());
    const std::size_t byPoints = limits.fewestVertices - std::min(limits.fewestVertices, points);
    return std::max(byFaces, 2 * byPoints);
}

}  // namespace

// The library stops at an error of its own, a mean of squared distances to planes, which says little about
// the largest distance. So what it returns is measured, and while it is too far off, the library gets a
// smaller error. The number of attempts is bounded; after the last one the mesh stays as it is.
Decimation decimate(const TriangleMesh& unit, const DecimationLimits& limits, DeviationMeter& meter) {
    if (!isReducible(unit.faces, unit.points.size(), limits)) return {unit.faces, 0};
    constexpr int kAttempts = 12;
    double error = limits.tolerance;
    std::size_t target = std::max<std::size_t>(limits.fewestFaces, 1);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Faces faces = simplified(unit, target, error);
        if (faces.size() == unit.faces.size()) break;
        if (const std::size_t missing = missingFaces(faces, limits); missing > 0 || faces.empty()) {
            target = std::max(target, faces.size()) + std::max<std::size_t>(missing, 1);
            continue;
        }
        const float deviation = meter.betweenSurfaces(faces);
        if (deviation <= limits.tolerance + kRounding) return {std::move(faces), deviation};
        if (error == 0) break;
        error *= std::clamp(0.9 * limits.tolerance / deviation, 0.1, 0.7);
    }
    return {unit.faces, 0};
}

Faces reduceTo(const TriangleMesh& unit, std::size_t mostFaces) {
    if (unit.faces.size() <= mostFaces) return unit.faces;
    constexpr double kAnyError = 1;
    Faces faces = simplified(unit, mostFaces, kAnyError);
    return faces.empty() ? unit.faces : faces;
}

}  // namespace velinor
