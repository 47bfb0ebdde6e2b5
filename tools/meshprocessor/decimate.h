// Fewer faces, no farther away than allowed.
#pragma once

#include <cstddef>

#include "tools/meshprocessor/deviation.h"
#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

struct DecimationLimits {
    std::size_t fewestFaces = 0;
    std::size_t fewestVertices = 0;
    double tolerance = 0;  // the largest deviation, as a fraction of the extent

    bool operator==(const DecimationLimits&) const = default;
};

struct Decimation {
    Faces faces;
    float deviation = 0;  // measured, as a fraction of the extent
};

// Faces over the points of `unit`, which `meter` measures: as few as the limits allow. Their deviation is
// measured and no larger than the tolerance, apart from the rounding of 32-bit numbers. A mesh that has no
// more faces or vertices than the limits name comes out as it is.
Decimation decimate(const TriangleMesh& unit, const DecimationLimits& limits, DeviationMeter& meter);

// About `mostFaces` faces over the points of `unit`, however far they deviate. More are left where the way in
// which the faces hang together leaves no choice.
Faces reduceTo(const TriangleMesh& unit, std::size_t mostFaces);

}  // namespace velinor
