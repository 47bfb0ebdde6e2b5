// Opens the SCENE of a command, whatever form it has.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/progress.h"
#include "cli/reading_options.h"
#include "hosts/import/import_notes.h"
#include "hosts/import/readable_format.h"
#include "hosts/snapshot/scene_snapshot.h"
#include "hosts/snapshot/snapshot_io.h"
#include "platform/temporary_folder.h"

namespace velinor {

// A scene and where it came from.
struct SceneSource {
    SceneSnapshot scene;
    std::filesystem::path folder;  // absolute; what relative names in the scene are meant against
    ImportNotes notes;             // what the file holds and the scene does not
    // Of an imported scene: holds the images that were taken out of the file, and lives as long as they are
    // needed. Null where there can be none.
    std::unique_ptr<TemporaryFolder> images = {};
    // Holds links to bitmaps where those cannot stand among the images. Null as a rule.
    std::unique_ptr<TemporaryFolder> links = {};
};

// "standard input" for "-", otherwise the path as given.
std::string sceneName(const std::filesystem::path& scene);

// All formats of scene files, snapshots first.
std::vector<ReadableFormat> readableFormats();

// How a snapshot of that name is encoded, by its ending: .scene.json or .json, .scene.cbor or .cbor, in small
// or capital letters. Nothing for other endings.
std::optional<SnapshotEncoding> snapshotEncodingByEnding(const std::filesystem::path& file);

// The bytes of a regular file, a pipe or a device. Throws CommandError (kNotRun) where it cannot be read.
std::string readSceneFile(const std::filesystem::path& file);

// Whether images that a scene file holds within itself are wanted as files.
enum class SceneImages { leave, extract };

// What is wanted of a scene besides itself.
struct SceneOptions {
    SceneImages images = SceneImages::leave;
    ReadingOptions reading = {};  // asset folders exist
};

// Reads the scene. Throws CommandError (kNotRun) or SceneError where it cannot be read; what `progress`
// throws passes through. Where images are extracted, a request to stop is remembered from the start of the
// import on (see rememberInterrupts), so that they are removed again.
SceneSource openScene(const std::filesystem::path& scene, Progress& progress, const SceneOptions& options);

}  // namespace velinor
