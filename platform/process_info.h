// What a process can ask of its operating system about itself.
#pragma once

#include <filesystem>

namespace velinor {

// The full path of the running program's executable. Throws std::filesystem::filesystem_error where the
// system does not tell it.
std::filesystem::path executablePath();

}  // namespace velinor
