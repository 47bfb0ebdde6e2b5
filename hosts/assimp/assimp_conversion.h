// A scene as the library has loaded it, made the host's.
#pragma once

#include "base/progress.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/assimp_reader.h"
#include "hosts/import/import_notes.h"
#include "hosts/snapshot/scene_snapshot.h"

struct aiScene;

namespace velinor {

// The snapshot of `scene`, which the library has loaded from `file`. Nothing that `scene` holds is trusted:
// null pointers, indices out of range, numbers that are not finite and names of any bytes are refused or left
// out, so that what comes back keeps the rules of snapshots and has finite numbers only. Frees the meshes of
// `scene` on the way, and adds to `notes` what is left out. Throws SceneError, with a message that begins
// with `file.shown`, where nothing of use is left.
SceneSnapshot snapshotOf(aiScene& scene, const SourceFile& file, const AssimpOptions& options,
                         Progress& progress, ImportNotes& notes);

}  // namespace velinor
