// The image library among the plug-in's files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velinor {

// Why the image library cannot be used, in words for a person; nothing where it can. On Windows it lies in
// the folder "tolvex" beside the plug-in, where the system does not look by itself, and is loaded here: to be
// called before anything of it is. Off Windows the system has loaded it along with the plug-in.
std::optional<std::string> imageLibraryFault(const std::filesystem::path& plugInFile);

}  // namespace velinor
