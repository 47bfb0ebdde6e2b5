#include "hosts/assimp/assimp_axes.h"

#include <assimp/scene.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <string>

#include "hosts/assimp/assimp_metadata.h"

namespace velinor {
namespace {

using Vector = aiVector3t<double>;

// (x, y, z) becomes (x, -z, y).
ColumnMatrix yUpToZUp() {
    return {1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1};
}

ColumnMatrix zUpToYUp() {
    return {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};
}

SpaceRule yUpRule() {
    return {yUpToZUp(), true, false};
}

// The unit vector that the metadata NAME (0 to 2) and NAMESign name, or nothing.
std::optional<Vector> axisOf(const aiMetadata* data, const std::string& name) {
    const auto axis = metadataValue<std::int32_t>(data, name);
    const auto sign = metadataValue<std::int32_t>(data, name + "Sign");
    if (!axis || *axis < 0 || *axis > 2) return std::nullopt;
    Vector vector;
    vector[static_cast<unsigned>(*axis)] = sign.value_or(1) < 0 ? -1 : 1;
    return vector;
}

// FBX states three axes; the rows of its rule are right, -front and up. Vertices stay: 3ds Max writes them
// Z-up and puts a rotation into its top-level nodes, which this undoes.
SpaceRule fbxRule(const aiScene& scene) {
    const SpaceRule usual{yUpToZUp(), false, false};
    const auto right = axisOf(scene.mMetaData, "CoordAxis");
    const auto front = axisOf(scene.mMetaData, "FrontAxis");
    const auto up = axisOf(scene.mMetaData, "UpAxis");
    if (!right || !front || !up) return usual;
    const auto& r = *right;
    const auto& f = *front;
    const auto& u = *up;
    const ColumnMatrix rule(r.x, r.y, r.z, 0, -f.x, -f.y, -f.z, 0, u.x, u.y, u.z, 0, 0, 0, 0, 1);
    return std::abs(rule.Determinant()) > 0.5 ? SpaceRule{rule, false, false} : usual;
}

// The rotation part of the root's matrix without its scale (COLLADA's unit).
ColumnMatrix unscaled(const aiMatrix4x4& root) {
    const ColumnMatrix m(root.a1, root.a2, root.a3, 0, root.b1, root.b2, root.b3, 0, root.c1, root.c2,
                         root.c3, 0, 0, 0, 0, 1);
    const double length = std::sqrt(m.a1 * m.a1 + m.b1 * m.b1 + m.c1 * m.c1);
    if (!(length > 0)) return {};
    ColumnMatrix rotation = m;
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 3; ++column)
            rotation[row][column] /= length;
    }
    return rotation;
}

bool isNear(const ColumnMatrix& a, const ColumnMatrix& b) {
    return a.Equal(b, 1e-5);
}

// COLLADA's up axis and unit stand in the root's matrix; the unit is dropped.
SpaceRule colladaRule(const aiScene& scene) {
    const ColumnMatrix root = unscaled(scene.mRootNode->mTransformation);
    if (isNear(root, zUpToYUp())) return {{}, false, true};
    const bool isRotation = std::abs(root.Determinant() - 1) < 1e-3;  // of anything but numbers it is none
    if (isNear(root, {}) || !isRotation) return {yUpToZUp(), true, true};
    return {yUpToZUp() * root, false, true};  // X_UP
}

// Some readers turn Z-up to Y-up with the root. One that does more than that is a node of the file.
SpaceRule otherRule(const aiScene& scene) {
    const bool isOfLibrary = scene.mRootNode->mTransformation.Equal(aiMatrix4x4(zUpToYUp()), 1e-5F);
    return isOfLibrary ? SpaceRule{{}, false, true} : yUpRule();
}

// Snaps the noise of a 90-degree rotation in one axis row.
void clean(host::GMatrix::Row& row) {
    const float length = std::sqrt(row[0] * row[0] + row[1] * row[1] + row[2] * row[2]);
    for (std::size_t i = 0; i < 3; ++i) {
        if (std::abs(row[i]) < 1e-6F * length) row[i] = 0;
    }
}

host::GMatrix::Row rowOf(double x, double y, double z, float w) {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z), w};
}

Vector turned(const ColumnMatrix& m, const aiVector3D& v) {
    const Vector p(v.x, v.y, v.z);
    return {m.a1 * p.x + m.a2 * p.y + m.a3 * p.z, m.b1 * p.x + m.b2 * p.y + m.b3 * p.z,
            m.c1 * p.x + m.c2 * p.y + m.c3 * p.z};
}

bool normalise(Vector& v) {
    const double length = std::sqrt(v.SquareLength());
    if (!(length > 0) || !std::isfinite(length)) return false;
    v = v * (1 / length);
    return true;
}

// `up` made orthogonal to the unit vector `z`; where they are parallel, the coordinate axis that is least so.
Vector upAcross(const Vector& z, Vector up) {
    const auto across = [&z](const Vector& v) { return v - z * (v * z); };
    if (normalise(up)) {
        Vector y = across(up);
        if (y.SquareLength() > 1e-12 && normalise(y)) return y;
    }
    Vector y = across(std::abs(z.z) < 0.9 ? Vector(0, 0, 1) : Vector(0, 1, 0));
    normalise(y);
    return y;
}

}  // namespace

SpaceRule spaceRuleOf(const aiScene& scene, const SourceFile& file, std::optional<UpAxis> upAxis,
                      ImportNotes& notes) {
    switch (file.format) {
        case FileFormat::obj:
            return upAxis == UpAxis::z ? SpaceRule{} : yUpRule();
        case FileFormat::upright:
            return upAxis == UpAxis::y ? yUpRule() : SpaceRule{};
        default:
            break;
    }
    if (upAxis) notes.addHint(file.shown, kUpAxisIsStated);
    switch (file.format) {
        case FileFormat::fbx:
            return fbxRule(scene);
        case FileFormat::gltf:
        case FileFormat::yUp:
            return yUpRule();
        case FileFormat::collada:
            return colladaRule(scene);
        case FileFormat::threeDs:
        case FileFormat::rotatedRoot:
            return {{}, false, true};
        default:
            return otherRule(scene);
    }
}

host::GMatrix objectToWorld(const ColumnMatrix& nodeToFile, const SpaceRule& rule) {
    ColumnMatrix m = rule.fileToHost * nodeToFile;
    if (rule.turnsObjects) m = m * zUpToYUp();
    host::GMatrix world(rowOf(m.a1, m.b1, m.c1, 0), rowOf(m.a2, m.b2, m.c2, 0), rowOf(m.a3, m.b3, m.c3, 0),
                        rowOf(m.a4, m.b4, m.c4, 1));
    for (int row = 0; row < 3; ++row)
        clean(world[row]);
    return world;
}

host::GMatrix viewToWorld(const ColumnMatrix& toHost, const aiVector3D& position, const aiVector3D& direction,
                          const aiVector3D& up) {
    const bool hasDirection = direction.SquareLength() > 0;
    Vector z = turned(toHost, hasDirection ? direction : aiVector3D(0, 0, -1)) * -1.0;
    if (!normalise(z)) z = Vector(0, 0, 1);
    const Vector y = upAcross(z, turned(toHost, up.SquareLength() > 0 ? up : aiVector3D(0, 1, 0)));
    const Vector x = y ^ z;
    const bool hasPosition = std::isfinite(position.x + position.y + position.z);
    const Vector moved =
        turned(toHost, hasPosition ? position : aiVector3D()) + Vector(toHost.a4, toHost.b4, toHost.c4);
    host::GMatrix world(rowOf(x.x, x.y, x.z, 0), rowOf(y.x, y.y, y.z, 0), rowOf(z.x, z.y, z.z, 0),
                        rowOf(moved.x, moved.y, moved.z, 1));
    for (int row = 0; row < 3; ++row)
        clean(world[row]);
    return world;
}

}  // namespace velinor
