// Paths whole and without "." and "..". Some standard libraries know nothing of what can stand before the
// folders of a Windows path: the share of a server ("\\server\share"), and the mark of a path that the system
// takes as it is ("\\?\C:"). They would make one "\" of the two, and look for the rest on the current drive.
// So nothing else asks them.
#pragma once

#include <filesystem>

namespace velinor {

// path::lexically_normal() that keeps such a beginning, with the system's separators.
std::filesystem::path normalPath(const std::filesystem::path& path);

// Whether `path` says all by itself where it is: path::is_absolute() that knows such beginnings.
bool isAbsolutePath(const std::filesystem::path& path);

// std::filesystem::absolute() that knows such beginnings: `path` itself where it is absolute, otherwise what
// it means against the current folder. Throws std::filesystem::filesystem_error where there is none.
std::filesystem::path absolutePath(const std::filesystem::path& path);

// `folder / path` that knows such beginnings: `path` itself where it is absolute. A path without a drive that
// starts with a separator is meant against the drive or the share of `folder`.
std::filesystem::path joinedPath(const std::filesystem::path& folder, const std::filesystem::path& path);

}  // namespace velinor
