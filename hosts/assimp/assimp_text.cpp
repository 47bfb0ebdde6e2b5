#include "hosts/assimp/assimp_text.h"

#include <assimp/types.h>

#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_format.h"

namespace velinor {
namespace {

// `text` without a UTF-8 sequence that its end cuts.
std::string_view withoutCutCharacter(std::string_view text) {
    std::size_t end = text.size();
    for (int i = 0; i < 3 && end > 0 && (static_cast<unsigned char>(text[end - 1]) & 0xC0U) == 0x80; ++i)
        --end;
    if (end == 0 || static_cast<unsigned char>(text[end - 1]) < 0xC0) return text;
    return text.substr(0, end - 1);
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

std::u16string textureName(std::string_view reference, const SourceFile& source) {
    return hostText(source.isAsciiFbx ? decodeFbxEntities(reference) : std::string(reference));
}

}  // namespace velinor
