// Copies that replace what is there.
#pragma once

#include <filesystem>

namespace velinor {

// Makes `to` a copy of the file `from`, whether or not there is such a file yet. Throws
// std::filesystem::filesystem_error with the operation word "copy" and both paths where that fails.
void copyFileOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace velinor
