// Opens the SCENE of a command, whatever form it has.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/progress.h"
#include "hosts/assimp/import_notes.h"
#include "hosts/snapshot/scene_snapshot.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {

// A scene and where it came from.
struct SceneSource {
    SceneSnapshot scene;
    std::filesystem::path folder;  // absolute; what relative names in the scene are meant against
    ImportNotes notes;             // what the file holds and the scene does not
};

// "standard input" for "-", otherwise the path as given.
std::string sceneName(const std::filesystem::path& scene);

// How a snapshot of that name is encoded, by its ending: .scene.json or .json, .scene.cbor or .cbor, in small
// or capital letters. Nothing for other endings.
std::optional<SnapshotEncoding> snapshotEncodingByEnding(const std::filesystem::path& file);

// The bytes of a regular file, a pipe or a device. Throws CommandError (kNotRun) where it cannot be read.
std::string readSceneFile(const std::filesystem::path& file);

// Reads the scene. Throws CommandError (kNotRun) or SceneError where it cannot be read; what `progress`
// throws passes through.
SceneSource openScene(const std::filesystem::path& scene, Progress& progress);

}  // namespace velinor
