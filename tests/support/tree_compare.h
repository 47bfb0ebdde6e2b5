// Folders as values, and the first difference between two.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace velinor {

// The content of each regular file by its path inside a folder; folders themselves do not count.
using Tree = std::map<std::string, std::string>;

Tree readTree(const std::filesystem::path& folder);
void writeTree(const std::filesystem::path& folder, const Tree& tree);

// The first difference, with file, line and both texts; nothing where the trees are equal byte for byte.
std::optional<std::string> firstDifference(const Tree& expected, const Tree& actual);

}  // namespace velinor
