#include "base/normal_path.h"

#include <algorithm>
#include <string_view>

namespace velinor {
namespace {

using Char = std::filesystem::path::value_type;
using Text = std::basic_string_view<Char>;

constexpr bool kIsWindows = std::filesystem::path::preferred_separator == '\\';

bool isSeparator(Char c) {
    return c == '/' || c == '\\';
}

// The place of the first separator from `from` on, or the end.
std::size_t separatorAt(Text path, std::size_t from) {
    const auto at = std::find_if(path.begin() + static_cast<std::ptrdiff_t>(std::min(from, path.size())),
                                 path.end(), isSeparator);
    return static_cast<std::size_t>(at - path.begin());
}

// How many characters stand before the folders: "\\server\share", "\\?\C:", "\\?\UNC\server\share", or none.
std::size_t prefixSize(Text path) {
    if (path.size() < 3 || !isSeparator(path[0]) || !isSeparator(path[1]) || isSeparator(path[2])) return 0;
    const std::size_t first = separatorAt(path, 2);
    const std::size_t second = separatorAt(path, first + 1);
    const bool isDevice = first == 3 && (path[2] == '?' || path[2] == '.');
    if (!isDevice) return second;
    const Text name = path.substr(std::min(first + 1, path.size()), second - std::min(first + 1, second));
    const bool isShare =
        name.size() == 3 && (name[0] | 0x20) == 'u' && (name[1] | 0x20) == 'n' && (name[2] | 0x20) == 'c';
    return isShare ? separatorAt(path, separatorAt(path, second + 1) + 1) : second;
}

// Zero off Windows, where two separators are one.
std::size_t prefixSizeHere(const std::filesystem::path& path) {
    return kIsWindows ? prefixSize(path.native()) : 0;
}

std::filesystem::path prefixOf(const std::filesystem::path& path) {
    return std::filesystem::path(Text(path.native()).substr(0, prefixSizeHere(path))).make_preferred();
}

}  // namespace

std::filesystem::path normalPath(const std::filesystem::path& path) {
    const std::size_t size = prefixSizeHere(path);
    if (size == 0) return path.lexically_normal();
    std::filesystem::path normal = prefixOf(path);
    normal += std::filesystem::path(Text(path.native()).substr(size)).lexically_normal();
    return normal;
}

bool isAbsolutePath(const std::filesystem::path& path) {
    return prefixSizeHere(path) > 0 || path.is_absolute();
}

std::filesystem::path absolutePath(const std::filesystem::path& path) {
    return isAbsolutePath(path) ? path : std::filesystem::absolute(path);
}

std::filesystem::path joinedPath(const std::filesystem::path& folder, const std::filesystem::path& path) {
    if (isAbsolutePath(path)) return path;
    if (prefixSizeHere(folder) == 0 || path.has_root_name() || !path.has_root_directory())
        return folder / path;
    std::filesystem::path joined = prefixOf(folder);
    joined += path;
    return joined;
}

}  // namespace velinor
