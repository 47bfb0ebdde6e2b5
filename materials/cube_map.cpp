#include "materials/cube_map.h"

#include <array>
#include <fstream>

#include "base/text.h"
#include "materials/texture_placement.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

void reportNotPlaced(const MaterialWriterContext& context, std::string_view purpose, const fs::path& source,
                     const FileCopy& copy) {
    const std::string name = source.empty() ? "no file is chosen" : shownPath(source);
    if (copy.outcome == FileCopy::Outcome::unreadable) {
        reportOnce(context, MessageId::textureUnreadable, purpose, name + ": " + copy.reason);
    } else {
        reportOnce(context, MessageId::cubeMapMissing, purpose, name);
    }
}

}  // namespace

void placeCubeMap(const MaterialWriterContext& context, std::string_view purpose, const fs::path& chosen,
                  std::string_view textureName) {
    const bool isShipped = textureName == kShippedCubeMap;
    const fs::path source =
        isShipped ? context.folders.pluginFolder / "tolvex" / "res" / fs::path(kShippedCubeMap) : chosen;
    if (!isScriptWord(textureName) && !chosen.empty())
        reportOnce(context, MessageId::cubeMapNameBreaksScript, purpose, shownBytes(textureName));
    const FileCopy copy = placeTexture(context, source, isShipped ? source.filename() : fileNameOf(chosen));
    if (!copy.isPlaced()) {
        reportNotPlaced(context, purpose, source, copy);
    } else if (!isShipped && copy.outcome == FileCopy::Outcome::done && !isCubeMap(source)) {
        reportOnce(context, MessageId::cubeMapNotCube, purpose, shownPath(source));
    }
}

bool isScriptWord(std::string_view name) {
    return !name.empty() && name.front() != '$' &&
           name.find_first_of(std::string_view(" \t\r\n\v\f\0{}:\"", 11)) == std::string_view::npos;
}

bool isCubeMap(const fs::path& path) {
    constexpr std::size_t kHeader = 128;   // with the magic word
    constexpr std::size_t kExtended = 20;  // follows in files of code "DX10"
    constexpr std::size_t kCode = 84;
    constexpr std::size_t kCapsByte = 113;  // of the second word of capabilities, its second byte
    constexpr std::size_t kMiscByte = kHeader + 8;
    constexpr unsigned kCapsCube = 0x02;
    constexpr unsigned kMiscCube = 0x04;

    std::array<char, kHeader + kExtended> bytes{};
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), bytes.size());
    const std::string_view text(bytes.data(), static_cast<std::size_t>(file.gcount()));
    if (text.size() < kHeader || !text.starts_with("DDS ")) return false;
    const auto byteAt = [&bytes](std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); };
    if ((byteAt(kCapsByte) & kCapsCube) != 0) return true;
    return text.substr(kCode, 4) == "DX10" && (byteAt(kMiscByte) & kMiscCube) != 0;
}

}  // namespace velinor
