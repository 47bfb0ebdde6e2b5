#include "hosts/assimp/assimp_text.h"

#include <assimp/types.h>

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

std::u16string fromWindows1252(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text.push_back(byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : static_cast<char16_t>(byte));
    }
    return text;
}

// `text` without a UTF-8 sequence that its end cuts.
std::string_view withoutCutCharacter(std::string_view text) {
    std::size_t end = text.size();
    for (int i = 0; i < 3 && end > 0 && (static_cast<unsigned char>(text[end - 1]) & 0xC0U) == 0x80; ++i)
        --end;
    if (end == 0 || static_cast<unsigned char>(text[end - 1]) < 0xC0) return text;
    return text.substr(0, end - 1);
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view textOf(const aiString& text) {
    return {text.data, text.length};
}

bool isCutOff(const aiString& text) {
    return text.length + 1 >= MAXLEN;
}

std::u16string hostName(const aiString& name) {
    const std::string_view bytes = textOf(name);
    if (auto text = toUtf16(bytes)) return *std::move(text);
    if (isCutOff(name)) {
        if (auto text = toUtf16(withoutCutCharacter(bytes))) return *std::move(text);
    }
    return fromWindows1252(bytes);
}

std::u16string hostText(std::string_view bytes) {
    if (auto text = toUtf16(bytes)) return *std::move(text);
    return fromWindows1252(bytes);
}

std::string shownName(const aiString& name) {
    return toUtf8(hostName(name));
}

std::string decodeFbxEntities(std::string_view text) {
    constexpr std::pair<std::string_view, char> kEntities[] = {
        {"&quot;", '"'}, {"&cr;", '\r'}, {"&lf;", '\n'}};
    std::string decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        std::size_t length = 1;
        char character = text.front();
        for (const auto& [entity, meaning] : kEntities) {
            if (text.substr(0, entity.size()) != entity) continue;
            length = entity.size();
            character = meaning;
        }
        decoded.push_back(character);
        text.remove_prefix(length);
    }
    return decoded;
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

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), lower);
    return text;
}

bool isSameButCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace velinor
