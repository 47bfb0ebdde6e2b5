// From the library's matrices and axes to those of the host.
//
// The library's matrices work on column vectors: a child's world matrix is parent * child, the translation is
// the last column. Host matrices work on row vectors, so their rows are the library's columns. The host is
// Z-up.
#pragma once

#include <assimp/matrix4x4.h>
#include <assimp/vector3.h>

#include <optional>

#include "host/gmatrix.h"
#include "hosts/assimp/assimp_format.h"

struct aiScene;

namespace velinor {

// A matrix of the library's form. Double precision: chains of nodes are long.
using ColumnMatrix = aiMatrix4x4t<double>;

// How the space of a file becomes the host's.
struct SpaceRule {
    ColumnMatrix fileToHost;       // the axes of the file's world to those of the host's; a rotation
    bool turnsObjects = false;     // object space, too, goes from Y-up to Z-up, with vertices and normals
    bool dropsRootMatrix = false;  // the root's matrix is an addition of the library
};

// The rule for `scene`; `upAxis` as in AssimpOptions. Adds a note where `upAxis` has no effect.
SpaceRule spaceRuleOf(const aiScene& scene, const SourceFile& file, std::optional<UpAxis> upAxis,
                      ImportNotes& notes);

// The object-to-world matrix of the host for a node whose world matrix in the file is `nodeToFile`. Entries
// of the three axis rows below a millionth of their row's length are noise of rotations by 90 degrees and
// become 0.
host::GMatrix objectToWorld(const ColumnMatrix& nodeToFile, const SpaceRule& rule);

// The matrix of a light or a camera that stands at `position` and looks along `direction`, all in a space
// that `toHost` takes to host space: local -Z looks, local +Y points up as far as it can. No scale. A zero
// `direction` looks along -Z of that space, a zero `up` is its +Y; one that is not finite counts as zero.
host::GMatrix viewToWorld(const ColumnMatrix& toHost, const aiVector3D& position, const aiVector3D& direction,
                          const aiVector3D& up);

// The host point of a point in object space: (x, y, z) becomes (x, -z, y) where the rule turns objects.
inline host::Point3 objectPoint(const aiVector3D& p, const SpaceRule& rule) {
    return rule.turnsObjects ? host::Point3{p.x, 0.0F - p.z, p.y} : host::Point3{p.x, p.y, p.z};
}

}  // namespace velinor
