#include "hosts/import/import_text.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace velinor {
namespace {

// Windows-1252 from 0x80 to 0x9F; the five unassigned bytes stand for themselves.
constexpr char16_t kWindows1252[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                       0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::u16string hostText(std::string_view bytes) {
    if (auto text = toUtf16(bytes)) return *std::move(text);
    return fromWindows1252(bytes);
}

std::u16string fromWindows1252(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text.push_back(byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : static_cast<char16_t>(byte));
    }
    return text;
}

std::string oneLine(std::string_view text) {
    std::string line;
    bool isBlankDue = false;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t') {
            isBlankDue = !line.empty();
            continue;
        }
        if (isBlankDue) line.push_back(' ');
        isBlankDue = false;
        line.push_back(c);
    }
    return printable(toUtf8(toUtf16Lossy(line)));
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), lower);
    return text;
}

bool isSameButCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace velinor
