// Names for what stands beside a file or folder for a while.
#pragma once

#include <filesystem>
#include <string_view>

namespace velinor {

// A path in the folder of `path` that no entry has: ".NAME.tolvex-PURPOSE-" and random digits.
std::filesystem::path unusedSibling(const std::filesystem::path& path, std::string_view purpose);

}  // namespace velinor
