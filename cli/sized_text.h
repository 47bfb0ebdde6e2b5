// Texts and numbers one after the other in one string of bytes, for messages between two processes of the
// command. What is taken from bytes that are not of this form is wrong, but within them, and leaves fewer.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace velinor {

inline void appendNumber(std::string& bytes, std::uint64_t number) {
    bytes += std::to_string(number);
    bytes += '\n';
}

inline std::uint64_t takeNumber(std::string_view& bytes) {
    std::uint64_t number = 0;
    const auto result = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
    bytes.remove_prefix(result.ec == std::errc() ? static_cast<std::size_t>(result.ptr - bytes.data())
                                                 : bytes.size());
    if (bytes.starts_with('\n')) bytes.remove_prefix(1);
    return number;
}

// A text stands after its size.
inline void appendText(std::string& bytes, std::string_view text) {
    appendNumber(bytes, text.size());
    bytes += text;
}

inline std::string_view takeText(std::string_view& bytes) {
    const std::uint64_t size = takeNumber(bytes);
    const std::string_view text = bytes.substr(0, std::min<std::uint64_t>(size, bytes.size()));
    bytes.remove_prefix(text.size());
    return text;
}

}  // namespace velinor
