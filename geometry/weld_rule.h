// When two corners of a mesh are one vertex.
#pragma once

#include <cstdint>

#include "geometry/vertex_list.h"

namespace velinor {

// The largest sum of the three differences between two positions, and between two normals, of one vertex.
inline constexpr double kWeldTolerance = 1e-8;

// The weld key of a position: the sum of its coordinates in whole millionths, each rounded half up, modulo
// 2^32. Only vertices of one key are ever welded, however near they are. The products are 32-bit floats and
// 0.5 is added in double precision; what no 64-bit integer holds counts as the smallest one.
std::int32_t weldKey(const host::Point3& position);

// Whether two vertices of one key are the same: positions and normals within the tolerance, u and v equal. A
// difference that is not a number counts as within the tolerance, a texture coordinate that is none as
// different.
bool isSameVertex(const MeshVertex& a, const MeshVertex& b);

}  // namespace velinor
