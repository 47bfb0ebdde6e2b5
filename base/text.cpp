#include "base/text.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace velinor {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isLeadSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isTrailSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The code point that starts at `text[at]`; moves `at` past it.
char32_t nextCodePoint(std::u16string_view text, std::size_t& at) {
    const char16_t unit = text[at++];
    if (isLeadSurrogate(unit) && at < text.size() && isTrailSurrogate(text[at])) {
        const char32_t high = static_cast<char32_t>(unit - 0xD800) << 10U;
        return 0x10000U + high + (text[at++] - 0xDC00U);
    }
    return isLeadSurrogate(unit) || isTrailSurrogate(unit) ? kReplacement : unit;
}

}  // namespace

std::string toUtf8(std::u16string_view utf16) {
    // Most names are ASCII throughout, and for those a plain copy is several times as fast.
    const auto firstOther = std::ranges::find_if(utf16, [](char16_t unit) { return unit >= 0x80; });
    std::string utf8(utf16.begin(), firstOther);
    for (auto at = static_cast<std::size_t>(firstOther - utf16.begin()); at < utf16.size();) {
        ::utf8::unchecked::append(nextCodePoint(utf16, at), std::back_inserter(utf8));
    }
    return utf8;
}

std::optional<std::u16string> toUtf16(std::string_view utf8) {
    if (!::utf8::is_valid(utf8.begin(), utf8.end())) return std::nullopt;
    std::u16string utf16;
    utf16.reserve(utf8.size());
    ::utf8::unchecked::utf8to16(utf8.begin(), utf8.end(), std::back_inserter(utf16));
    return utf16;
}

std::u16string toUtf16Lossy(std::string_view bytes) {
    std::string repaired;
    repaired.reserve(bytes.size());
    ::utf8::replace_invalid(bytes.begin(), bytes.end(), std::back_inserter(repaired), kReplacement);
    return toUtf16(repaired).value_or(std::u16string());
}

std::string lowBytes(std::u16string_view utf16) {
    std::string bytes;
    bytes.reserve(utf16.size());
    for (const char16_t unit : utf16)
        bytes.push_back(static_cast<char>(unit & 0xFFU));
    return bytes;
}

std::string utf8OfLowBytes(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += static_cast<char16_t>(static_cast<unsigned char>(byte));
    return toUtf8(text);
}

std::string sanitiseName(std::string_view name) {
    const auto isKept = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
               c == '.';
    };
    std::string sanitised(name);
    for (char& c : sanitised) {
        if (!isKept(c)) c = '_';
    }
    return sanitised;
}

std::u16string_view lastPathComponent(std::u16string_view path) {
    return path.substr(path.find_last_of(u"/\\") + 1);  // none found is -1
}

std::string_view lastPathComponent(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

#ifdef _WIN32
std::filesystem::path toPath(std::u16string_view utf16) {
    // As wide text: the path's own conversion from UTF-16 throws on an unpaired surrogate.
    return std::filesystem::path(std::wstring(utf16.begin(), utf16.end()));
}

std::string utf8Path(const std::filesystem::path& path) {
    const std::wstring& native = path.native();
    return toUtf8(std::u16string(native.begin(), native.end()));
}

std::filesystem::path pathOfUtf8(std::string_view text) {
    return toPath(toUtf16Lossy(text));
}
#else
std::filesystem::path toPath(std::u16string_view utf16) {
    return std::filesystem::path(toUtf8(utf16));
}

std::string utf8Path(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path pathOfUtf8(std::string_view text) {
    return std::filesystem::path(text);
}
#endif

std::string printable(std::string_view text) {
    constexpr std::string_view kHex = "0123456789abcdef";
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\t') {
            line += "\\t";
        } else if (c == '\r') {
            line += "\\r";
        } else if (byte < 0x20 || byte == 0x7F) {
            line += {'\\', 'x', kHex[byte >> 4U], kHex[byte & 0xFU]};
        } else {
            line.push_back(c);
        }
    }
    return line;
}

}  // namespace velinor
