// The properties of a library material, read with care: whatever type and size they have.
#pragma once

#include <assimp/material.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velinor {

// Red, green, blue, alpha.
using Colour = std::array<float, 4>;

// Looks at one material, which must outlive it. Keys are compared without regard to case, since writers of
// one program spell them differently from version to version. A value of another type, of too few bytes or
// with a number that is not finite is not there.
class MaterialValues {
  public:
    explicit MaterialValues(const aiMaterial& material) : material_(material) {}

    bool has(std::string_view key) const { return find(key) != nullptr; }
    bool hasKeyThatBegins(std::string_view start) const;

    std::optional<float> number(std::string_view key) const;
    std::optional<std::uint32_t> integer(std::string_view key) const;

    // Whether a choice of yes or no, a number or a byte, is yes.
    bool isSet(std::string_view key) const;

    // Three or four numbers; the alpha of three is 1.
    std::optional<Colour> colour(std::string_view key) const;

    // Whether it is a colour, and one of more than black.
    bool isNotBlack(std::string_view key) const;

    // The bytes of a text as the library holds them; absent where there are none.
    std::optional<std::string> text(std::string_view key) const;

    // The file of the first texture of a kind, as the library holds it.
    std::optional<std::string> texture(aiTextureType type, unsigned index = 0) const;

    // Whether a texture of the material is moved, turned or scaled on its surface.
    bool hasMovedTexture() const;

    // Whether a texture takes another than the first set of texture coordinates.
    bool hasTextureOfOtherSet() const;

    // Whether several textures of one kind lie upon each other, clear coats and sheens apart.
    bool hasLayeredTextures() const;

  private:
    const aiMaterialProperty* find(std::string_view key) const;

    const aiMaterial& material_;
};

}  // namespace velinor
