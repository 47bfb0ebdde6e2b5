// ASE files, the text form in which 3ds Max exports scenes, read into a scene snapshot. docs/ase.md tells
// what of them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/progress.h"
#include "hosts/import/import_notes.h"
#include "hosts/import/readable_format.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

struct AseOptions {
    // Further folders in which bitmaps are looked for; relative ones against the current folder.
    std::vector<std::filesystem::path> assetFolders = {};
};

ReadableFormat aseFormat();

// Whether `file` has an ending of ASE files, in small or capital letters. The file need not
// exist.
bool isAseFile(const std::filesystem::path& file);

// The scene in `bytes`, the content of `file`: hierarchy, transforms, meshes with smoothing groups, material
// IDs and map channels, lights, cameras, helpers, materials and their maps. Fills `notes` with what the scene
// lacks. Throws SceneError, with a message that begins with `file` as given and has the line and the column,
// where the text breaks the format. What `progress` throws passes through. Keeps nothing beyond the call.
SceneSnapshot readAse(std::string bytes, const std::filesystem::path& file, const AseOptions& options,
                      Progress& progress, ImportNotes& notes);

}  // namespace velinor
