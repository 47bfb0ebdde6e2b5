// Other names of folders, and other folders, where the usual ones do not serve.
#pragma once

#include <filesystem>
#include <vector>

namespace velinor {

// The name that the system has for an existing path besides its own, with few and simple letters; `path`
// itself where it has none, as always off Windows.
std::filesystem::path shortPath(const std::filesystem::path& path);

// Folders in which any user may make files that are needed for a while, besides the one that the environment
// names. Some may not exist.
std::vector<std::filesystem::path> sharedTemporaryFolders();

}  // namespace velinor
