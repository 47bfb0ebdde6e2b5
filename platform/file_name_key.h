// When two names are one file.
#pragma once

#include <filesystem>

namespace velinor {

// A key that is equal for paths which name one file by the system's rules for names: as they stand off
// Windows; on Windows without regard to case and to the kind of separator. Looks at no disk, so it knows
// nothing of links and of "..".
std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path);

}  // namespace velinor
