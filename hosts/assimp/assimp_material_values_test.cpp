#include "hosts/assimp/assimp_material_values.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace velinor {
namespace {

class MaterialValuesTest : public testing::Test {
  protected:
    void add(const char* key, aiPropertyTypeInfo type, const std::string& bytes,
             aiTextureType semantic = aiTextureType_NONE, unsigned index = 0) {
        material_.AddBinaryProperty(bytes.data(), static_cast<unsigned>(bytes.size()), key, semantic, index,
                                    type);
    }

    template <typename Number>
    static std::string bytesOf(std::initializer_list<Number> numbers) {
        std::string bytes(numbers.size() * sizeof(Number), '\0');
        std::memcpy(bytes.data(), numbers.begin(), bytes.size());
        return bytes;
    }

    static std::string textBytes(std::uint32_t length, const std::string& characters) {
        return bytesOf({length}) + characters;
    }

    aiMaterial material_;
    MaterialValues values_{material_};
};

TEST_F(MaterialValuesTest, KeysAreFoundWithoutRegardToCase) {
    add("$raw.3dsMax|main|baseColor", aiPTI_Float, bytesOf({0.F, 0.5F, 1.F, 0.25F}));
    EXPECT_EQ(values_.colour("$raw.3dsmax|MAIN|basecolor"), (Colour{0, 0.5F, 1, 0.25F}));
    EXPECT_TRUE(values_.has("$RAW.3dsMax|main|basecolor"));
    EXPECT_FALSE(values_.has("$raw.3dsMax|main|baseColo"));
    EXPECT_TRUE(values_.hasKeyThatBegins("$Raw."));
    EXPECT_FALSE(values_.hasKeyThatBegins("$raw.3dsMax|main|baseColor2"));
}

TEST_F(MaterialValuesTest, NumbersOfEveryTypeAreRead) {
    add("float", aiPTI_Float, bytesOf({0.5F}));
    add("double", aiPTI_Double, bytesOf({0.25}));
    add("integer", aiPTI_Integer, bytesOf<std::int32_t>({-2}));
    EXPECT_EQ(values_.number("float"), 0.5F);
    EXPECT_EQ(values_.number("double"), 0.25F);
    EXPECT_EQ(values_.number("integer"), -2.F);
    EXPECT_EQ(values_.integer("integer"), 0xFFFFFFFEU);
    EXPECT_EQ(values_.integer("float"), std::nullopt);
    EXPECT_EQ(values_.colour("float"), std::nullopt) << "a colour has three numbers";
}

TEST_F(MaterialValuesTest, ValuesOfAWrongTypeOrSizeAreNotThere) {
    add("short float", aiPTI_Float, "abc");
    add("short integer", aiPTI_Integer, "ab");
    add("two of three", aiPTI_Float, bytesOf({1.F, 1.F}));
    add("buffer", aiPTI_Buffer, bytesOf({1.F, 1.F, 1.F}));
    add("text", aiPTI_String, textBytes(2, std::string("ab\0", 3)));
    for (const char* key : {"short float", "short integer", "buffer", "text", "none"}) {
        EXPECT_EQ(values_.number(key), std::nullopt) << key;
        EXPECT_EQ(values_.integer(key), std::nullopt) << key;
        EXPECT_EQ(values_.colour(key), std::nullopt) << key;
    }
    EXPECT_EQ(values_.colour("two of three"), std::nullopt);
    EXPECT_EQ(values_.text("buffer"), std::nullopt);
}

TEST_F(MaterialValuesTest, NumbersThatAreNotFiniteAreNotThere) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    add("nan", aiPTI_Float, bytesOf({nan}));
    add("infinite", aiPTI_Float, bytesOf({1.F, std::numeric_limits<float>::infinity(), 1.F}));
    add("too large", aiPTI_Double, bytesOf({1e300}));
    add("fourth", aiPTI_Float, bytesOf({1.F, 1.F, 1.F, nan}));
    EXPECT_EQ(values_.number("nan"), std::nullopt);
    EXPECT_EQ(values_.number("too large"), std::nullopt);
    EXPECT_EQ(values_.colour("infinite"), std::nullopt);
    EXPECT_EQ(values_.colour("fourth"), std::nullopt);
}

// The library's own reader ends the process on these.
TEST_F(MaterialValuesTest, TextsWhoseLengthIsWrongAreNotThere) {
    add("good", aiPTI_String, textBytes(2, std::string("ab\0", 3)));
    add("empty", aiPTI_String, textBytes(0, std::string("\0\0", 2)));
    add("too long", aiPTI_String, textBytes(0xFFFFFFFF, std::string("ab\0", 3)));
    add("no length", aiPTI_String, "ab");
    EXPECT_EQ(values_.text("good"), "ab");
    for (const char* key : {"empty", "too long", "no length", "none"})
        EXPECT_EQ(values_.text(key), std::nullopt) << key;
}

TEST_F(MaterialValuesTest, TexturesAreFoundByKindAndNumber) {
    add("$tex.file", aiPTI_String, textBytes(1, std::string("a\0", 2)), aiTextureType_DIFFUSE, 0);
    add("$tex.file", aiPTI_String, textBytes(1, std::string("b\0", 2)), aiTextureType_DIFFUSE, 1);
    EXPECT_EQ(values_.texture(aiTextureType_DIFFUSE), "a");
    EXPECT_EQ(values_.texture(aiTextureType_DIFFUSE, 1), "b");
    EXPECT_EQ(values_.texture(aiTextureType_SPECULAR), std::nullopt);
    EXPECT_TRUE(values_.hasLayeredTextures());
}

TEST_F(MaterialValuesTest, TexturesThatLieUnmovedAreNotMoved) {
    EXPECT_FALSE(values_.hasMovedTexture());
    add("$tex.uvtrafo", aiPTI_Float, bytesOf({0.F, 0.F, 1.F, 1.F, -0.F}), aiTextureType_DIFFUSE);
    add("$raw.DiffuseColor|uvtrafo", aiPTI_Buffer, "abc");
    EXPECT_FALSE(values_.hasMovedTexture());
    add("$raw.DiffuseColor|uvtrafo", aiPTI_Float, bytesOf({0.F, 0.F, 1.F, 1.F, 0.1F}), aiTextureType_UNKNOWN);
    EXPECT_TRUE(values_.hasMovedTexture());
}

TEST_F(MaterialValuesTest, RolesOfACoatAreNoLayers) {
    add("$tex.file", aiPTI_String, textBytes(1, std::string("a\0", 2)), aiTextureType_CLEARCOAT, 2);
    EXPECT_FALSE(values_.hasLayeredTextures());
    EXPECT_FALSE(values_.hasTextureOfOtherSet());
    add("$tex.uvwsrc", aiPTI_Integer, bytesOf<std::int32_t>({1}), aiTextureType_DIFFUSE);
    EXPECT_TRUE(values_.hasTextureOfOtherSet());
}

}  // namespace
}  // namespace velinor
