#include "hosts/assimp/physical_material.h"

#include "hosts/assimp/image_test_support.h"
#include "hosts/assimp/material_test_support.h"

namespace velinor {
namespace {

constexpr const char* kNames[] = {"base_color_map", "base_color",    "transparency",
                                  "bump_map",       "roughness_map", "roughness",
                                  "metalness_map",  "metalness",     "emission_map"};

class PhysicalMaterialTest : public MaterialTest {
  protected:
    using MaterialTest::MaterialTest;

    // `key` begins "3dsMax|".
    void raw(const std::string& key, std::vector<float> values) {
        numbers(("$raw." + key).c_str(), std::move(values));
    }
    void rawFile(const std::string& key, const std::string& file) {
        text(("$raw." + key + "|file").c_str(), file);
    }

    static void expectNine(const SnapshotMaterial& material) {
        EXPECT_EQ(material.className, u"Physical Material");
        ASSERT_EQ(material.properties.size(), std::size(kNames));
        for (std::size_t i = 0; i < std::size(kNames); ++i)
            EXPECT_EQ(toUtf8(material.properties[i].name), kNames[i]);
    }
};

using FbxPhysical = PhysicalMaterialTest;

TEST_F(FbxPhysical, AllNineParametersAreThereEvenWhereTheFileHasNone) {
    classId(0x3D6B1CEC, 0xDEADC001);
    const SnapshotMaterial material = convert();
    expectNine(material);
    for (const std::u16string_view name :
         {u"base_color_map", u"bump_map", u"roughness_map", u"metalness_map", u"emission_map"})
        EXPECT_EQ(map(material, name), "") << toUtf8(name);
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0.5F, 0.5F, 0.5F, 1}));
    EXPECT_EQ(number(material, u"transparency"), 0);
    EXPECT_EQ(number(material, u"roughness"), 0);
    EXPECT_EQ(number(material, u"metalness"), 0);
    EXPECT_TRUE(maps_.empty());
}

TEST_F(FbxPhysical, PhysicalMaterial) {
    classId(0x3D6B1CEC, 0xDEADC001);
    numbers("$clr.diffuse", {0.0002F, 0, 0});
    numbers("$mat.roughnessFactor", {-1.6F});
    raw("3dsMax|Parameters|base_color", {0.25F, 0.5F, 0.75F, 1});
    raw("3dsMax|Parameters|transparency", {0.25F});
    raw("3dsMax|Parameters|roughness", {0.125F});
    raw("3dsMax|Parameters|metalness", {0.5F});
    rawFile("3dsMax|Parameters|base_color_map", "base.png");
    rawFile("3dsMax|Parameters|roughness_map", "rough.png");
    rawFile("3dsMax|Parameters|metalness_map", "metal.png");
    rawFile("3dsMax|Parameters|bump_map", "bump.png");
    rawFile("3dsMax|Parameters|emission_map", "glow.png");
    rawFile("3dsMax|Parameters|mapM0", "other.png");
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(map(material, u"base_color_map"), "Bitmap base.png");
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0.25F, 0.5F, 0.75F, 1}));
    EXPECT_EQ(number(material, u"transparency"), 0.25F);
    EXPECT_EQ(map(material, u"bump_map"), "Normal Bump (Bitmap bump.png)");
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap rough.png");
    EXPECT_EQ(number(material, u"roughness"), 0.125F);
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap metal.png");
    EXPECT_EQ(number(material, u"metalness"), 0.5F);
    EXPECT_EQ(map(material, u"emission_map"), "Bitmap glow.png");
}

TEST_F(FbxPhysical, PbrByRoughnessWhateverTheCaseOfItsKeys) {
    classId(0xD00F1E00, 0xBE77E500);
    raw("3dsMax|main|basecolor", {0, 1, 1, 0.5F});
    raw("3dsMax|main|roughness", {0.5F});
    raw("3dsMax|main|metalness", {0.25F});
    integer("$raw.3dsMax|main|useGlossiness", 2);
    rawFile("3dsMax|main|base_color_map", "base.png");
    rawFile("3dsMax|main|Roughness_Map", "rough.png");
    rawFile("3dsMax|main|metalness_map", "metal.png");
    rawFile("3dsMax|main|norm_map", "norm.png");
    rawFile("3dsMax|main|emit_color_map", "glow.png");
    rawFile("3dsMax|main|ao_map", "ao.png");
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(map(material, u"base_color_map"), "Bitmap base.png");
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap rough.png");
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap metal.png");
    EXPECT_EQ(map(material, u"bump_map"), "Normal Bump (Bitmap norm.png)");
    EXPECT_EQ(map(material, u"emission_map"), "Bitmap glow.png");
    EXPECT_EQ(number(material, u"roughness"), 0.5F);
    EXPECT_EQ(number(material, u"metalness"), 0.25F);
    EXPECT_EQ(number(material, u"transparency"), 0);
    EXPECT_TRUE(isNoted("room.fbx", "occlusion"));
}

TEST_F(FbxPhysical, PbrByGlossinessIsInvertedWithItsMap) {
    classId(0xD00F1E00, 0x01DBAD33);
    raw("3dsMax|main|glossiness", {0.25F});
    integer("$raw.3dsMax|main|useGlossiness", 1);
    rawFile("3dsMax|main|glossiness_map", "gloss.png");
    folder_.write("gloss.png", imageFile({2, 1, {0, 200}}));
    const SnapshotMaterial material = convert();
    EXPECT_EQ(number(material, u"roughness"), 0.75F);
    EXPECT_EQ(number(material, u"metalness"), 0);
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap gloss-roughness.png");
    EXPECT_EQ(samplesOf(imageBytes("gloss-roughness.png")), (Samples{2, 1, {255, 55}}));
}

TEST_F(FbxPhysical, UseGlossinessSaysWhatTheNumberMeansWhateverItsName) {
    struct Case {
        const char* key;
        std::optional<std::uint32_t> useGlossiness;
        float expected;
    };
    const Case cases[] = {{"roughness", 1, 0.75F},  {"roughness", 2, 0.25F},  {"roughness", {}, 0.25F},
                          {"glossiness", 1, 0.75F}, {"glossiness", 2, 0.25F}, {"glossiness", {}, 0.75F}};
    for (const auto& [key, useGlossiness, expected] : cases) {
        material().Clear();
        text("?mat.name", "M");
        classId(0xD00F1E00, 0xBE77E500);
        raw(std::string("3dsMax|main|") + key, {0.25F});
        if (useGlossiness) integer("$raw.3dsMax|main|useGlossiness", *useGlossiness);
        EXPECT_EQ(number(convert(), u"roughness"), expected) << key << " " << useGlossiness.value_or(0);
    }
}

TEST_F(FbxPhysical, GltfMaterialIsTransparentOnlyWhereItIsBlended) {
    for (const auto& [mode, expected] : {std::pair(1U, 0.F), {2U, 0.F}, {3U, 0.75F}}) {
        material().Clear();
        text("?mat.name", "M");
        classId(0x38420192, 0x45FE4E1B);
        raw("3dsMax|main|baseColor", {1, 1, 1, 0.25F});
        integer("$raw.3dsMax|main|alphaMode", mode);
        EXPECT_EQ(number(convert(), u"transparency"), expected) << mode;
    }
}

TEST_F(FbxPhysical, GltfMaterialHasMapsOfItsOwnNames) {
    classId(0x38420192, 0x45FE4E1B);
    rawFile("3dsMax|main|baseColorMap", "base.png");
    rawFile("3dsMax|main|roughnessMap", "rough.png");
    rawFile("3dsMax|main|metalnessMap", "metal.png");
    rawFile("3dsMax|main|normalMap", "norm.png");
    rawFile("3dsMax|main|emissionMap", "glow.png");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(map(material, u"base_color_map"), "Bitmap base.png");
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap rough.png");
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap metal.png");
    EXPECT_EQ(map(material, u"bump_map"), "Normal Bump (Bitmap norm.png)");
    EXPECT_EQ(map(material, u"emission_map"), "Bitmap glow.png");
}

TEST_F(FbxPhysical, OpenPbrIsPhysicalToo) {
    classId(0xF1551E33, 0x37FB1337);
    raw("3dsMax|Parameters|base_color", {0.25F, 0.5F, 0.75F, 1});
    raw("3dsMax|Parameters|specular_roughness", {0.5F});
    raw("3dsMax|Parameters|base_metalness", {1});
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(number(material, u"roughness"), 0.5F);
    EXPECT_EQ(number(material, u"metalness"), 1);
}

TEST_F(FbxPhysical, AnUnknownClassIsStandard) {
    classId(0x3D6B1CEC, 0xBE77E500);
    EXPECT_EQ(convert().className, u"Standard");
}

TEST_F(FbxPhysical, ValuesOfWrongTypesAreNotThere) {
    classId(0x3D6B1CEC, 0xDEADC001);
    text("$raw.3dsMax|Parameters|base_color", "red");
    text("$raw.3dsMax|Parameters|roughness", "0.5");
    raw("3dsMax|Parameters|base_color_map|file", {1, 2});
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(number(material, u"roughness"), 0);
    EXPECT_EQ(map(material, u"base_color_map"), "");
}

class GltfMaterial : public PhysicalMaterialTest {
  protected:
    GltfMaterial() : PhysicalMaterialTest(FileFormat::gltf) {}

    void packed(const std::string& file) {
        texture(aiTextureType_METALNESS, file);
        texture(aiTextureType_DIFFUSE_ROUGHNESS, file);
        texture(aiTextureType_UNKNOWN, file);
        numbers("$mat.metallicFactor", {1});
        numbers("$mat.roughnessFactor", {0.5F});
    }
};

TEST_F(GltfMaterial, MetallicRoughness) {
    numbers("$clr.base", {0.25F, 0.5F, 0.75F, 0.5F});
    numbers("$mat.metallicFactor", {0.125F});
    numbers("$mat.roughnessFactor", {0.25F});
    text("$mat.gltf.alphaMode", "OPAQUE");
    texture(aiTextureType_DIFFUSE, "base.png");
    texture(aiTextureType_BASE_COLOR, "base.png");
    texture(aiTextureType_NORMALS, "norm.png");
    texture(aiTextureType_EMISSIVE, "glow.png");
    texture(aiTextureType_LIGHTMAP, "ao.png");
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0.25F, 0.5F, 0.75F, 0.5F}));
    EXPECT_EQ(number(material, u"transparency"), 0) << "opaque, whatever its alpha";
    EXPECT_EQ(number(material, u"metalness"), 0.125F);
    EXPECT_EQ(number(material, u"roughness"), 0.25F);
    EXPECT_EQ(map(material, u"base_color_map"), "Bitmap base.png");
    EXPECT_EQ(map(material, u"bump_map"), "Normal Bump (Bitmap norm.png)");
    EXPECT_EQ(map(material, u"emission_map"), "Bitmap glow.png");
    EXPECT_TRUE(isNoted("room.fbx", "occlusion"));
}

TEST_F(GltfMaterial, IsTransparentWhereItIsNotOpaque) {
    for (const auto& [mode, expected] : {std::pair("BLEND", 0.75F), {"MASK", 0.75F}, {"OPAQUE", 0.F}}) {
        material().Clear();
        numbers("$clr.base", {1, 1, 1, 0.25F});
        numbers("$mat.roughnessFactor", {1});
        text("?mat.name", "M");
        text("$mat.gltf.alphaMode", mode);
        EXPECT_EQ(number(convert(), u"transparency"), expected) << mode;
    }
}

TEST_F(GltfMaterial, ThePackedImageIsTakenApart) {
    packed("mr.png");
    folder_.write("mr.png", imageFile({2, 3, {1, 20, 30, 2, 40, 50}}));
    const SnapshotMaterial material = convert();
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap mr-roughness.png");
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap mr-metalness.png");
    EXPECT_EQ(samplesOf(imageBytes("mr-roughness.png")), (Samples{2, 1, {20, 40}}));
    EXPECT_EQ(samplesOf(imageBytes("mr-metalness.png")), (Samples{2, 1, {30, 50}}));
    EXPECT_TRUE(notes_.notes().empty());
}

TEST_F(GltfMaterial, APackedImageWithinTheFileIsTakenApartAndNotWrittenItself) {
    embedFile("", imageFile({1, 3, {1, 20, 30}}));
    packed("*0");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap image-roughness.png");
    EXPECT_EQ(imageNames(), (std::vector<std::string>{"image-metalness.png", "image-roughness.png"}));
}

TEST_F(GltfMaterial, APackedImageThatCannotBeReadStaysForBothWithANote) {
    packed("mr.png");
    folder_.write("mr.png", "no image");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap mr.png");
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap mr.png");
    EXPECT_TRUE(isNoted("M", "\"mr.png\" cannot be taken apart for roughness"));
    EXPECT_TRUE(imageNames().empty());
}

TEST_F(GltfMaterial, AMissingPackedImageIsNamedForBothAndNotedOnce) {
    packed("mr.png");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap mr.png");
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap mr.png");
    EXPECT_EQ(notes_.notes().size(), 1U);
    EXPECT_TRUE(isNoted("M", "\"mr.png\" is missing"));
}

TEST_F(GltfMaterial, WithoutAFolderForImagesPackedOnesStay) {
    options_.imageFolder.reset();
    packed("mr.png");
    folder_.write("mr.png", imageFile({1, 3, {1, 2, 3}}));
    EXPECT_EQ(map(convert(), u"roughness_map"), "Bitmap mr.png");
    EXPECT_TRUE(notes_.notes().empty());
}

TEST_F(GltfMaterial, SpecularGlossiness) {
    numbers("$clr.base", {1, 1, 1, 1});
    numbers("$clr.diffuse", {0.25F, 0.5F, 0.75F, 0.5F});
    numbers("$mat.glossinessFactor", {0.75F});
    numbers("$mat.metallicFactor", {1});
    numbers("$mat.roughnessFactor", {1});
    numbers("$mat.opacity", {1});
    text("$mat.gltf.alphaMode", "BLEND");
    texture(aiTextureType_DIFFUSE, "diffuse.png");
    texture(aiTextureType_SPECULAR, "sg.png");
    folder_.write("sg.png", imageFile({2, 4, {1, 2, 3, 0, 4, 5, 6, 200}}));
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0.25F, 0.5F, 0.75F, 0.5F}));
    EXPECT_EQ(number(material, u"transparency"), 0.5F);
    EXPECT_EQ(number(material, u"roughness"), 0.25F);
    EXPECT_EQ(number(material, u"metalness"), 0);
    EXPECT_EQ(map(material, u"base_color_map"), "Bitmap diffuse.png");
    EXPECT_EQ(map(material, u"metalness_map"), "");
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap sg-roughness.png");
    EXPECT_EQ(samplesOf(imageBytes("sg-roughness.png")), (Samples{2, 1, {255, 55}}));
}

TEST_F(GltfMaterial, SpecularWithoutAlphaGivesNoRoughnessMap) {
    numbers("$mat.glossinessFactor", {0.75F});
    texture(aiTextureType_SPECULAR, "sg.png");
    folder_.write("sg.png", imageFile({1, 3, {1, 2, 3}}));
    EXPECT_EQ(map(convert(), u"roughness_map"), "");
    EXPECT_TRUE(imageNames().empty());
}

class ObjMaterial : public PhysicalMaterialTest {
  protected:
    ObjMaterial() : PhysicalMaterialTest(FileFormat::obj) {}
};

TEST_F(ObjMaterial, WithRoughnessOrMetalnessIsPhysical) {
    numbers("$clr.diffuse", {0.25F, 0.5F, 0.75F});
    numbers("$mat.opacity", {0.25F});
    numbers("$mat.roughnessFactor", {0.5F});
    numbers("$mat.metallicFactor", {1});
    texture(aiTextureType_DIFFUSE, "kd.png");
    texture(aiTextureType_DIFFUSE_ROUGHNESS, "pr.png");
    texture(aiTextureType_METALNESS, "pm.png");
    texture(aiTextureType_HEIGHT, "bump.png");
    texture(aiTextureType_EMISSIVE, "ke.png");
    const SnapshotMaterial material = convert();
    expectNine(material);
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0.25F, 0.5F, 0.75F, 1}));
    EXPECT_EQ(number(material, u"transparency"), 0.75F);
    EXPECT_EQ(number(material, u"roughness"), 0.5F);
    EXPECT_EQ(number(material, u"metalness"), 1);
    EXPECT_EQ(map(material, u"base_color_map"), "Bitmap kd.png");
    EXPECT_EQ(map(material, u"roughness_map"), "Bitmap pr.png");
    EXPECT_EQ(map(material, u"metalness_map"), "Bitmap pm.png");
    EXPECT_EQ(map(material, u"bump_map"), "Bitmap bump.png") << "heights, not normals";
    EXPECT_EQ(map(material, u"emission_map"), "Bitmap ke.png");
}

TEST_F(ObjMaterial, NormalsComeBeforeHeights) {
    numbers("$mat.metallicFactor", {1});
    texture(aiTextureType_HEIGHT, "bump.png");
    texture(aiTextureType_NORMALS, "norm.png");
    EXPECT_EQ(map(convert(), u"bump_map"), "Normal Bump (Bitmap norm.png)");
}

}  // namespace
}  // namespace velinor
