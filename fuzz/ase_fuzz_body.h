// What must hold for every file that is read as an ASE file.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "base/progress.h"
#include "hosts/ase/ase_reader.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {

inline void requireAse(bool holds) {
    if (!holds) std::abort();
}

// The scene in `bytes`; nothing where they are refused, which must come with a message of one line.
inline std::optional<SceneSnapshot> readFuzzedAse(std::string_view bytes) {
    try {
        NoProgress progress;
        ImportNotes notes;
        SceneSnapshot scene = readAse(std::string(bytes), "no-such-folder/a.ase", {}, progress, notes);
        requireAse(!notes.notes().empty());
        for (const ImportNote& note : notes.notes())
            requireAse(!note.text.empty() && note.text.find('\n') == std::string::npos);
        return scene;
    } catch (const SceneError& error) {
        const std::string_view message = error.what();
        requireAse(message.starts_with("no-such-folder/a.ase: ") &&
                   message.find('\n') == std::string_view::npos);
        return std::nullopt;
    }
}

// Reads `bytes`. They are refused with a message, or the scene keeps the rules of snapshots and has finite
// numbers only; ends the process otherwise. ASCII text must give the same scene as UTF-16. Whether it is a
// scene.
inline bool fuzzAse(std::string_view bytes) {
    const std::optional<SceneSnapshot> scene = readFuzzedAse(bytes);
    if (scene) {
        try {
            checkSnapshot(*scene, "a.ase");
        } catch (const SceneError&) {
            requireAse(false);
        }
        requireAse(*scene == *scene);  // what is not a number would not be equal to itself
    }
    const bool isAscii = std::ranges::all_of(bytes, [](char c) { return c > '\0'; });
    if (isAscii && !bytes.empty()) {
        std::string wide = "\xFF\xFE";
        for (const char c : bytes) {
            wide.push_back(c);
            wide.push_back('\0');
        }
        requireAse(readFuzzedAse(wide) == scene);
    }
    return scene.has_value();
}

}  // namespace velinor
