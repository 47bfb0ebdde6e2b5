#include "hosts/assimp/embedded_images.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/assimp/image_folder.h"
#include "hosts/import/texture_files.h"

namespace velinor {
namespace {

unsigned imageCount(const aiScene& scene) {
    return scene.mTextures == nullptr ? 0 : scene.mNumTextures;
}

// Held as the bytes of an image file, mWidth of them.
bool isCompressed(const aiTexture& texture) {
    return texture.mHeight == 0;
}

std::string_view bytesOf(const aiTexture& texture) {
    return {reinterpret_cast<const char*>(texture.pcData), texture.mWidth};
}

// Some readers put the ending there, some a description.
std::string hintOf(const aiTexture& texture) {
    const char* const begin = texture.achFormatHint;
    const std::string hint =
        lowerCase(std::string(begin, std::find(begin, begin + sizeof texture.achFormatHint, '\0')));
    return imageEnding(toUtf16Lossy("." + hint));
}

std::string endingByContent(std::string_view bytes) {
    constexpr std::pair<std::string_view, std::string_view> kBeginnings[] = {
        {"\x89PNG", "png"}, {"\xFF\xD8\xFF", "jpg"}, {"DDS ", "dds"}, {"BM", "bmp"}, {"GIF8", "gif"}};
    for (const auto& [beginning, ending] : kBeginnings) {
        if (bytes.starts_with(beginning)) return std::string(ending);
    }
    return bytes.size() > 12 && bytes.starts_with("RIFF") && bytes.substr(8, 4) == "WEBP" ? "webp" : "";
}

std::u16string portable(std::u16string path) {
    std::ranges::replace(path, u'\\', u'/');
    return path;
}

}  // namespace

EmbeddedImages::EmbeddedImages(const aiScene& scene, const SourceFile& source)
    : scene_(scene), source_(source) {
    if (source.format == FileFormat::gltf) return;
    for (unsigned image = 0; image < imageCount(scene); ++image) {
        std::u16string path = portable(name(image));
        const std::u16string_view last = lastPathComponent(path);
        if (last.empty()) continue;
        byLastComponent_.try_emplace(std::u16string(last), image);
        byPath_.try_emplace(std::move(path), image);
    }
}

const aiTexture* EmbeddedImages::texture(unsigned image) const {
    return image < imageCount(scene_) ? scene_.mTextures[image] : nullptr;
}

std::optional<unsigned> EmbeddedImages::find(std::string_view reference) const {
    if (reference.starts_with('*')) {
        unsigned image = 0;
        const char* const end = reference.data() + reference.size();
        const auto [stop, error] = std::from_chars(reference.data() + 1, end, image);
        if (error != std::errc() || stop != end || texture(image) == nullptr) return std::nullopt;
        return image;
    }
    const std::u16string path = portable(textureName(reference, source_));
    if (const auto found = byPath_.find(path); found != byPath_.end()) return found->second;
    const auto found = byLastComponent_.find(std::u16string(lastPathComponent(path)));
    return found == byLastComponent_.end() ? std::nullopt : std::optional(found->second);
}

std::u16string EmbeddedImages::name(unsigned image) const {
    const aiTexture* const held = texture(image);
    return held == nullptr ? std::u16string() : textureName(textOf(held->mFilename), source_);
}

std::string EmbeddedImages::ending(unsigned image) const {
    const aiTexture* const held = texture(image);
    if (held == nullptr) return {};
    if (!isCompressed(*held)) return "png";
    if (std::string ending = imageEnding(name(image)); !ending.empty()) return ending;
    if (std::string hint = hintOf(*held); !hint.empty()) return hint;
    return held->pcData == nullptr ? std::string() : endingByContent(bytesOf(*held));
}

ConvertedImage EmbeddedImages::file(unsigned image) const {
    const aiTexture* const held = texture(image);
    if (held == nullptr || held->pcData == nullptr || held->mWidth == 0) return {{}, "it is empty"};
    if (isCompressed(*held)) return {std::string(bytesOf(*held)), {}};
    // The counts are of 32 bits each, so the product cannot overflow.
    const std::uint64_t count = std::uint64_t{held->mWidth} * held->mHeight;
    if (count > std::numeric_limits<std::uint64_t>::max() / sizeof(aiTexel)) return {{}, "it is too large"};
    return imageOfPixels({reinterpret_cast<const std::uint8_t*>(held->pcData), count * sizeof(aiTexel)},
                         held->mWidth);
}

}  // namespace velinor
