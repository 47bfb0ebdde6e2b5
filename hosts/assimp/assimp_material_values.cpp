#include "hosts/assimp/assimp_material_values.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "hosts/assimp/assimp_text.h"

namespace velinor {
namespace {

bool endsWithButCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && isSameButCase(text.substr(text.size() - end.size()), end);
}

template <typename Number>
Number at(const aiMaterialProperty& property, std::size_t index) {
    Number number{};
    std::memcpy(&number, property.mData + index * sizeof(Number), sizeof(Number));
    return number;
}

template <typename Number>
std::vector<float> numbersAs(const aiMaterialProperty& property, std::size_t most) {
    const std::size_t count = std::min<std::size_t>(property.mDataLength / sizeof(Number), most);
    std::vector<float> numbers;
    for (std::size_t i = 0; i < count; ++i)
        numbers.push_back(static_cast<float>(at<Number>(property, i)));
    return numbers;
}

// Up to `most` numbers; none where one of them is not finite.
std::vector<float> numbersOf(const aiMaterialProperty* property, std::size_t most) {
    if (property == nullptr || property->mData == nullptr) return {};
    std::vector<float> numbers;
    if (property->mType == aiPTI_Float) numbers = numbersAs<float>(*property, most);
    if (property->mType == aiPTI_Double) numbers = numbersAs<double>(*property, most);
    if (property->mType == aiPTI_Integer) numbers = numbersAs<std::int32_t>(*property, most);
    const bool isFinite = std::ranges::all_of(numbers, [](float number) { return std::isfinite(number); });
    return isFinite ? numbers : std::vector<float>();
}

// A text is its length in four bytes, its bytes and a zero. The library's own reader ends the process where
// these do not agree.
std::optional<std::string> textIn(const aiMaterialProperty* property) {
    if (property == nullptr || property->mData == nullptr || property->mType != aiPTI_String)
        return std::nullopt;
    if (property->mDataLength < sizeof(std::uint32_t) + 2) return std::nullopt;
    const auto length = at<std::uint32_t>(*property, 0);
    if (length == 0 || length > property->mDataLength - sizeof(std::uint32_t)) return std::nullopt;
    return std::string(property->mData + sizeof(std::uint32_t), length);
}

// (move u, move v, scale u, scale v, turn).
bool isMove(const std::vector<float>& transform) {
    return transform.size() == 5 && transform != std::vector<float>{0, 0, 1, 1, 0};
}

template <typename Predicate>
bool anyProperty(const aiMaterial& material, Predicate predicate) {
    for (unsigned i = 0; i < material.mNumProperties; ++i) {
        const aiMaterialProperty* property = material.mProperties[i];
        if (property != nullptr && predicate(*property, textOf(property->mKey))) return true;
    }
    return false;
}

}  // namespace

const aiMaterialProperty* MaterialValues::find(std::string_view key) const {
    for (unsigned i = 0; i < material_.mNumProperties; ++i) {
        const aiMaterialProperty* property = material_.mProperties[i];
        if (property != nullptr && isSameButCase(textOf(property->mKey), key)) return property;
    }
    return nullptr;
}

bool MaterialValues::hasKeyThatBegins(std::string_view start) const {
    return anyProperty(material_, [start](const aiMaterialProperty&, std::string_view key) {
        return isSameButCase(key.substr(0, start.size()), start);
    });
}

std::optional<float> MaterialValues::number(std::string_view key) const {
    const std::vector<float> numbers = numbersOf(find(key), 1);
    return numbers.empty() ? std::nullopt : std::optional(numbers.front());
}

std::optional<std::uint32_t> MaterialValues::integer(std::string_view key) const {
    const aiMaterialProperty* property = find(key);
    if (property == nullptr || property->mData == nullptr || property->mType != aiPTI_Integer ||
        property->mDataLength < sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    return at<std::uint32_t>(*property, 0);
}

bool MaterialValues::isSet(std::string_view key) const {
    const aiMaterialProperty* property = find(key);
    if (property == nullptr || property->mData == nullptr || property->mDataLength == 0) return false;
    if (property->mType == aiPTI_Buffer) return property->mData[0] != 0;
    return number(key).value_or(0) != 0;
}

std::optional<Colour> MaterialValues::colour(std::string_view key) const {
    const std::vector<float> numbers = numbersOf(find(key), 4);
    if (numbers.size() < 3) return std::nullopt;
    return Colour{numbers[0], numbers[1], numbers[2], numbers.size() < 4 ? 1.F : numbers[3]};
}

bool MaterialValues::isNotBlack(std::string_view key) const {
    const auto found = colour(key);
    return found && std::any_of(found->begin(), found->begin() + 3, [](float part) { return part > 0; });
}

std::optional<std::string> MaterialValues::text(std::string_view key) const {
    return textIn(find(key));
}

std::optional<std::string> MaterialValues::texture(aiTextureType type, unsigned index) const {
    std::optional<std::string> file;
    anyProperty(material_, [&](const aiMaterialProperty& property, std::string_view key) {
        if (property.mSemantic != static_cast<unsigned>(type) || property.mIndex != index ||
            !isSameButCase(key, "$tex.file")) {
            return false;
        }
        file = textIn(&property);
        return file.has_value();
    });
    return file;
}

bool MaterialValues::hasMovedTexture() const {
    return anyProperty(material_, [](const aiMaterialProperty& property, std::string_view key) {
        return (isSameButCase(key, "$tex.uvtrafo") || endsWithButCase(key, "|uvtrafo")) &&
               isMove(numbersOf(&property, 5));
    });
}

bool MaterialValues::hasTextureOfOtherSet() const {
    return anyProperty(material_, [](const aiMaterialProperty& property, std::string_view key) {
        if (!isSameButCase(key, "$tex.uvwsrc")) return false;
        const std::vector<float> set = numbersOf(&property, 1);
        return !set.empty() && set.front() != 0;
    });
}

bool MaterialValues::hasLayeredTextures() const {
    return anyProperty(material_, [](const aiMaterialProperty& property, std::string_view key) {
        // The numbers of these kinds tell roles, not layers.
        const bool isOfRoles = property.mSemantic >= static_cast<unsigned>(aiTextureType_SHEEN);
        return isSameButCase(key, "$tex.file") && property.mIndex > 0 && !isOfRoles;
    });
}

}  // namespace velinor
