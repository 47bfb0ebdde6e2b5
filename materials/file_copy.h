// Copies of files, whole or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "base/progress.h"

namespace velinor {

// What became of a source file that was to be copied.
struct FileCopy {
    enum class Outcome {
        done,          // the target holds what the source holds
        alreadyThere,  // it held that before
        missing,       // there is no source
        unreadable,    // the source is no regular file, or cannot be read
    };
    Outcome outcome = Outcome::done;
    std::string reason;       // of an unreadable source, for people
    std::uint64_t bytes = 0;  // of the copy

    bool isPlaced() const { return outcome == Outcome::done || outcome == Outcome::alreadyThere; }

    bool operator==(const FileCopy&) const = default;
};

// What would keep a copy of `source` from being made before a byte is read; `done` where nothing would.
FileCopy checkSource(const std::filesystem::path& source);

// Copies `source` to `target` and replaces what is there; onto itself, a file stays as it is. The target
// appears, complete, in one step: a failed copy leaves there what was there before. `progress` is told of no
// amount, but often. Throws std::filesystem::filesystem_error with the operation word "copy" and both paths
// where the target cannot be written.
FileCopy copyWholeFile(const std::filesystem::path& source, const std::filesystem::path& target,
                       Progress& progress);

// Whether the path exists. Throws std::filesystem::filesystem_error with the operation word "exists" where
// that cannot be told.
bool targetExists(const std::filesystem::path& target);

// Whether both files can be read and hold the same bytes.
bool haveSameContent(const std::filesystem::path& a, const std::filesystem::path& b, Progress& progress);

}  // namespace velinor
