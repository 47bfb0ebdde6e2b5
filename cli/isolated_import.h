// Importing a scene file in a process of its own, so that a damaged file cannot bring the command down.
#pragma once

#include <filesystem>

#include "base/progress.h"
#include "hosts/assimp/assimp_reader.h"
#include "hosts/import/import_notes.h"
#include "hosts/snapshot/scene_snapshot.h"
#include "platform/isolated_run.h"

namespace velinor {

// What readWithAssimp gives for the file. Throws SceneError as it does, and also where the file makes the
// library crash or use up its limits; the message tells which. Throws CommandError where an image of the
// scene cannot be written. `progress` is asked a few times a second, so that what it throws ends the import
// even where the library hangs. What the import has written into options.imageFolder stays there. This
// process must not have used the image library before, and must have called runIsolatedWorkIfAsked first.
SceneSnapshot importIsolated(const std::filesystem::path& file, const AssimpOptions& options,
                             Progress& progress, ImportNotes& notes, const IsolationLimits& limits = {});

}  // namespace velinor
