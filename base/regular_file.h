#pragma once

#include <filesystem>
#include <system_error>

namespace velinor {

// Whether there is a file of this name, and no folder, pipe or device: opening a pipe would wait for its
// other end. What cannot be looked at is none.
inline bool isRegularFile(const std::filesystem::path& path) {
    using Path = std::filesystem::path;
    // A system call would take the text up to the zero for the name.
    if (path.native().find(Path::value_type{}) != Path::string_type::npos) return false;
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace velinor
