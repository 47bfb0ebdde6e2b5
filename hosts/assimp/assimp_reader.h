// Scene files of many programs (FBX, glTF, COLLADA, OBJ, 3DS, ...), read with Assimp into a scene snapshot.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "base/progress.h"
#include "hosts/import/import_notes.h"
#include "hosts/import/readable_format.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

enum class UpAxis { y, z };

struct AssimpOptions {
    // The axis that points up in files of formats that do not state one (OBJ, STL, PLY, ...); absent: the
    // usual axis of the format. Formats that state their axis (FBX, glTF, COLLADA, ...) keep it, and a note
    // says so.
    std::optional<UpAxis> upAxis = {};

    // An existing folder for images that the file holds within itself, and for those that are made of packed
    // ones; the scene names them there. Absent: such images are named but not written, and packed ones stay.
    std::optional<std::filesystem::path> imageFolder = {};

    // Further folders in which bitmaps are looked for; relative ones against the current folder.
    std::vector<std::filesystem::path> assetFolders = {};
};

// The formats that can be read, by their endings.
const std::vector<ReadableFormat>& assimpFormats();

// Whether the ending of `file` is one of theirs, in small or capital letters. The file need not exist.
bool canReadWithAssimp(const std::filesystem::path& file);

// The scene in `file`: hierarchy, transforms in host space (lengths as they stand in the file), instances,
// meshes, lights, cameras, helpers, user properties, materials and their maps. Fills `notes` with what is
// left out. Throws SceneError, with a message that begins with `file` as given, where the file cannot be read
// or holds nothing; std::filesystem::filesystem_error where an image cannot be written. What `progress`
// throws passes through. Prints nothing, and keeps nothing beyond the call. Damaged files of some formats
// abort or hang inside the library: call it in a process that may die.
SceneSnapshot readWithAssimp(const std::filesystem::path& file, const AssimpOptions& options,
                             Progress& progress, ImportNotes& notes);

}  // namespace velinor
