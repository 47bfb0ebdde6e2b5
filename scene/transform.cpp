#include "scene/transform.h"

namespace velinor {
namespace {

using host::GMatrix;

// Takes a package point (X, Y, Z) to the host point (X, -Z, Y).
const GMatrix kPackageToHost{{1, 0, 0, 0}, {0, 0, 1, 0}, {0, -1, 0, 0}, {0, 0, 0, 1}};
const GMatrix kHostToPackage = kPackageToHost.Inverse();

host::Quat toPackageRotation(host::Quat q) {
    q.w = -q.w;
    q.Normalize();
    return q;
}

}  // namespace

host::Point3 toPackagePoint(const host::Point3& p) {
    return {p.x, p.z, -p.y};
}

GMatrix toPackageTransform(const GMatrix& m, bool convert) {
    if (!convert) return m;
    return (kPackageToHost * m) * kHostToPackage;
}

host::Quat packageOrientation(const GMatrix& packageMatrix) {
    return toPackageRotation(packageMatrix.Rotation());
}

NodeTransform decompose(const GMatrix& relative) {
    const GMatrix::Parts parts = relative.Decompose();
    return {relative.Translation(), toPackageRotation(parts.rotation), parts.scaling, parts.isMirrored,
            parts.isSingular};
}

}  // namespace velinor
