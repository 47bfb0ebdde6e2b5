// Paths without "." and "..", by their text alone.
#pragma once

#include <filesystem>

namespace velinor {

// path::lexically_normal() that keeps what stands before the folders of a Windows path: of a share
// ("\\server\share"), and of a path that the system takes as it is ("\\?\C:"). Some standard libraries know
// of neither and would make one "\" of the two.
std::filesystem::path normalPath(const std::filesystem::path& path);

}  // namespace velinor
