// Takes a text apart: lines, and words in a line.
#pragma once

#include <algorithm>
#include <string_view>

namespace velinor {

// The next line of `text`, without its end (LF or CR LF), which is taken off `text` with it.
inline std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// `text` without the blanks and tabs at both ends.
inline std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

// The next word of `line`, which is taken off it with the blanks before; empty where there is none.
inline std::string_view takeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(" \t"));
    line.remove_prefix(word.size());
    return word;
}

}  // namespace velinor
