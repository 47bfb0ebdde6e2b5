// What must hold for every scene that the import library can leave in memory.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/progress.h"
#include "fuzz/fuzzed_scene.h"
#include "hosts/assimp/assimp_conversion.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"
#include "platform/temporary_folder.h"

namespace velinor {

inline void requireOfScene(bool holds, const std::string& promise) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", promise.c_str());
    std::abort();
}

inline bool isOneLine(std::string_view text) {
    return text.find('\n') == std::string_view::npos;
}

// Writes the snapshot in both encodings and reads it again. That it is equal to itself says that no number in
// it is "not a number"; JSON cannot hold infinite ones.
inline void requireSnapshot(const SceneSnapshot& snapshot) {
    try {
        checkSnapshot(snapshot, "room");
        for (const SnapshotEncoding encoding : {SnapshotEncoding::cbor, SnapshotEncoding::json}) {
            const std::string text = writeSnapshot(snapshot, encoding);
            requireOfScene(readSnapshot(text, encoding, "room") == snapshot,
                           "the snapshot comes back as it was");
        }
    } catch (const SceneError& error) {
        requireOfScene(false, std::string("a snapshot keeps its rules: ") + error.what());
    }
}

// Converts the scene that `bytes` describe. It is refused with a message of one line that names the file, or
// comes to a snapshot that keeps all rules; ends the process otherwise. Whether it was converted.
inline bool fuzzAssimpScene(std::string_view bytes) {
    FuzzBytes source(bytes);
    SourceFile file;
    file.path = "no-such-folder/room.any";
    file.shown = "room.any";
    file.stem = "room";
    file.format = static_cast<FileFormat>(source.below(static_cast<unsigned>(FileFormat::other) + 1));
    file.isAsciiFbx = file.format == FileFormat::fbx && source.once(2);
    AssimpOptions options;
    if (source.once(4)) options.upAxis = source.once(2) ? UpAxis::z : UpAxis::y;
    // A folder takes longer than all the rest, so most scenes get none.
    std::optional<TemporaryFolder> images;
    if (source.once(16)) options.imageFolder = images.emplace().path();
    const std::unique_ptr<aiScene> scene = FuzzedScene(source).build();
    NoProgress progress;
    ImportNotes notes;
    std::optional<SceneSnapshot> snapshot;
    try {
        snapshot = snapshotOf(*scene, file, options, progress, notes);
    } catch (const SceneError& error) {
        const std::string_view message = error.what();
        requireOfScene(message.starts_with("room.any: ") && isOneLine(message), std::string(message));
    }
    for (const ImportNote& note : notes.notes())
        requireOfScene(!note.text.empty() && isOneLine(note.text), "a note is one line: " + note.text);
    if (snapshot) requireSnapshot(*snapshot);
    return snapshot.has_value();
}

}  // namespace velinor
