// Scenes of any size for the benchmarks: the same for the same size on every run.
#pragma once

#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// A scene of `nodeCount` nodes: groups of a helper with nine meshes below it, each turned, moved and scaled
// in a way of its own; every fourth mesh is an instance of the first of its group, every tenth group ends
// with a lamp, every hundredth mesh carries parameters in its name.
SceneSnapshot syntheticScene(int nodeCount);

// A scene of one mesh: a curved grid of at least `triangleCount` triangles with normals and texture
// coordinates.
SceneSnapshot syntheticMesh(int triangleCount);

}  // namespace velinor
