// From the host's Z-up space to the package's Y-up space. docs/coordinates.md derives what is computed here.
#pragma once

#include "host/gmatrix.h"

namespace velinor {

// The package point of a host point: (x, y, z) becomes (x, z, -y). A zero y gives a negative zero.
host::Point3 toPackagePoint(const host::Point3& p);

// The package matrix of a host matrix, both for row vectors: A * `m` * A^-1, where A takes package points to
// host points. With `convert` false, `m` itself.
host::GMatrix toPackageTransform(const host::GMatrix& m, bool convert);

// The rotation of a package matrix as the package writes it: the host's left-handed quaternion with w
// negated, which makes it right-handed, normalised after that.
host::Quat packageOrientation(const host::GMatrix& packageMatrix);

// The placement of a node as the scene descriptor writes it.
struct NodeTransform {
    host::Point3 position;
    host::Quat orientation;
    host::Point3 scale;
    bool isMirrored = false;
    bool isSingular = false;
};

// Splits the matrix of a node relative to its parent.
NodeTransform decompose(const host::GMatrix& relative);

// Turns what looks along its own -Z, as the host's lights and cameras do, to -Y, where the axis change has
// put that direction. Multiplied on the right of an orientation, it makes the written orientation look along
// its own -Z again. Of length sqrt(2): those who use it decide whether to normalise the product.
inline constexpr host::Quat kLookAlongMinusZ{-1, 0, 0, 1};

}  // namespace velinor
