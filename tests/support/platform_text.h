// What texts look like on the system that the tests run on.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace velinor {

#ifdef _WIN32
inline constexpr bool kIsWindows = true;
#else
inline constexpr bool kIsWindows = false;
#endif

// `text` with the line ends that a text file has here.
inline std::string asTextFile(std::string_view text) {
    std::string lines;
    for (const char c : text) {
        if (c == '\n' && kIsWindows) lines += '\r';
        lines += c;
    }
    return lines;
}

// `text` with this system's separators in place of slashes.
inline std::string asPathText(std::string text) {
    if (kIsWindows) std::ranges::replace(text, '/', '\\');
    return text;
}

// `text` with slashes in place of this system's separators.
inline std::string withSlashes(std::string text) {
    if (kIsWindows) std::ranges::replace(text, '\\', '/');
    return text;
}

}  // namespace velinor
