#include "hosts/assimp/standard_material.h"

#include <limits>

#include "hosts/assimp/material_test_support.h"

namespace velinor {
namespace {

class StandardMaterialTest : public MaterialTest {
  protected:
    // A material of nothing but its name.
    void restart(FileFormat format) {
        file_.format = format;
        material().Clear();
        text("?mat.name", "M");
    }
};

TEST_F(StandardMaterialTest, FbxHasColoursOpacityAndGlossiness) {
    numbers("$clr.diffuse", {0.25F, 0.5F, 0.75F});
    numbers("$clr.specular", {0.9F, 0.8F, 0.7F});
    numbers("$mat.opacity", {0.5F});
    numbers("$mat.shininess", {1024});
    numbers("$mat.shinpercent", {0.3F});
    const SnapshotMaterial material = convert();
    EXPECT_EQ(material.className, u"Standard");
    EXPECT_EQ(material.name, u"M");
    EXPECT_EQ(material.diffuse, (host::Point3{0.25F, 0.5F, 0.75F}));
    EXPECT_EQ(material.opacity, 0.5F);
    EXPECT_EQ(material.glossiness, 1);
    ASSERT_TRUE(std::holds_alternative<host::Point3>(material.specular)) << "no number can be read of it";
    EXPECT_EQ(std::get<host::Point3>(material.specular), (host::Point3{0.9F, 0.8F, 0.7F}));
    EXPECT_TRUE(material.properties.empty());
}

TEST_F(StandardMaterialTest, GlossinessComesFromTheShininessOfTheFormat) {
    struct Case {
        FileFormat format;
        float shininess;
        float expected;
        const char* generator = "";
    };
    const Case cases[] = {
        {FileFormat::fbx, 2, 0.1F},
        {FileFormat::fbx, 675.588F, 0.94F},
        {FileFormat::fbx, 0, 0},
        {FileFormat::fbx, -4, 0},
        {FileFormat::fbx, 1e30F, 1},
        {FileFormat::threeDs, 25, 0.25F},
        {FileFormat::obj, 1024, 1},
        {FileFormat::obj, 32, 0.5F},
        {FileFormat::gltf, 256, 0.8F},
        {FileFormat::collada, 2, 0.1F, "FBX COLLADA exporter"},
        {FileFormat::collada, 0.3F, 0.3F, "Maya 8.0 | ColladaMaya v3.02"},
        {FileFormat::collada, 10, 0.1F, "3dsMax 9 - Feeling ColladaMax v3.05A."},
        {FileFormat::collada, 0.228923F, 0.228923F, "3dsMax 11 - Feeling ColladaMax v3.05B."},
        {FileFormat::other, 4, 0.2F},
    };
    for (const auto& [format, shininess, expected, generator] : cases) {
        restart(format);
        file_.generator = generator;
        numbers("$mat.shininess", {shininess});
        EXPECT_NEAR(convert().glossiness, expected, 1e-5F) << generator << " " << shininess;
    }
}

TEST_F(StandardMaterialTest, OpacityOfNothingMeansOpaqueWhereWritersMeanThat) {
    const std::pair<FileFormat, float> cases[] = {{FileFormat::collada, 1},
                                                  {FileFormat::gltf, 1},
                                                  {FileFormat::fbx, 0},
                                                  {FileFormat::threeDs, 0},
                                                  {FileFormat::obj, 0}};
    for (const auto& [format, expected] : cases) {
        restart(format);
        numbers("$mat.opacity", {0});
        EXPECT_EQ(convert().opacity, expected) << static_cast<int>(format);
    }
    restart(FileFormat::threeDs);
    numbers("$mat.opacity", {0.83F});
    EXPECT_EQ(convert().opacity, 0.83F);
}

TEST_F(StandardMaterialTest, WhatIsNotThereOrNotFiniteIsTheHostsDefault) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const bool isNan : {false, true}) {
        restart(FileFormat::fbx);
        if (isNan) {
            numbers("$clr.diffuse", {nan, 0, 0});
            numbers("$clr.specular", {0, 0, nan});
            numbers("$mat.opacity", {nan});
            numbers("$mat.shininess", {nan});
        }
        const SnapshotMaterial material = convert();
        EXPECT_EQ(material.diffuse, (host::Point3{150.F / 255, 150.F / 255, 150.F / 255}));
        EXPECT_EQ(material.opacity, 1);
        EXPECT_EQ(material.glossiness, 0);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(material.specular));
    }
    texture(aiTextureType_DIFFUSE, "a.png");
    EXPECT_EQ(convert().diffuse, (host::Point3{1, 1, 1})) << "a map is shown as it is";
}

TEST_F(StandardMaterialTest, FbxPropertiesFillTheSlots) {
    struct Case {
        const char* property;
        std::int32_t slot;
    };
    const Case cases[] = {
        {"AmbientColor", 0},       {"DiffuseColor", 1},  {"SpecularColor", 2},   {"ShininessExponent", 3},
        {"SpecularFactor", 4},     {"EmissiveColor", 5}, {"EmissiveFactor", 5},  {"TransparentColor", 6},
        {"TransparencyFactor", 6}, {"Bump", 8},          {"ReflectionColor", 9}, {"DisplacementColor", 11}};
    for (const auto& [property, slot] : cases) {
        restart(FileFormat::fbx);
        text(("$raw." + std::string(property) + "|file").c_str(), "a.png");
        const SnapshotMaterial material = convert();
        ASSERT_EQ(material.textureMaps.size(), 1U) << property;
        EXPECT_EQ(this->slot(material, slot), "Bitmap a.png") << property;
    }
    text("$raw.NormalMap|file", "norm.png");
    text("$raw.Bump|file", "bump.png");
    EXPECT_EQ(slot(convert(), 8), "Normal Bump (Bitmap norm.png)") << "normals come before heights";
}

TEST_F(StandardMaterialTest, FbxSpecularFactorIsNotTakenForTheColourToo) {
    text("$raw.SpecularFactor|file", "level.png");
    texture(aiTextureType_SPECULAR, "level.png");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(slot(material, 4), "Bitmap level.png");
    EXPECT_EQ(slot(material, 2), "");
}

TEST_F(StandardMaterialTest, KindsOfTexturesFillTheSlotsElsewhere) {
    struct Case {
        aiTextureType type;
        std::int32_t slot;
        const char* expected = "Bitmap a.png";
    };
    const Case cases[] = {{aiTextureType_AMBIENT, 0},
                          {aiTextureType_DIFFUSE, 1},
                          {aiTextureType_SPECULAR, 2},
                          {aiTextureType_SHININESS, 3},
                          {aiTextureType_EMISSIVE, 5},
                          {aiTextureType_OPACITY, 6},
                          {aiTextureType_NORMALS, 8, "Normal Bump (Bitmap a.png)"},
                          {aiTextureType_HEIGHT, 8},
                          {aiTextureType_REFLECTION, 9},
                          {aiTextureType_DISPLACEMENT, 11}};
    for (const FileFormat format :
         {FileFormat::collada, FileFormat::obj, FileFormat::threeDs, FileFormat::other}) {
        for (const auto& [type, slot, expected] : cases) {
            restart(format);
            texture(type, "a.png");
            const SnapshotMaterial material = convert();
            EXPECT_EQ(material.textureMaps.size(), 1U) << type;
            EXPECT_EQ(this->slot(material, slot), expected) << type;
        }
    }
}

TEST_F(StandardMaterialTest, OneFileIsOneMap) {
    texture(aiTextureType_DIFFUSE, "a.png");
    texture(aiTextureType_SPECULAR, ".\\a.png");
    texture(aiTextureType_NORMALS, "a.png");
    folder_.write("a.png", "x");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(material.textureMaps.size(), 3U);
    EXPECT_EQ(maps_.size(), 2U) << "the bitmap, and the normals with it";
}

TEST_F(StandardMaterialTest, LossesAreNotedOnceAKind) {
    float moved[] = {0.5F, 0, 1, 1, 0};
    material().AddProperty(moved, 5, "$tex.uvtrafo", aiTextureType_DIFFUSE, 0);
    texture(aiTextureType_DIFFUSE, "a.png", 1);
    convert();
    EXPECT_TRUE(isNoted("room.fbx", "1 material (\"M\") has textures that are moved, turned or scaled"));
    EXPECT_TRUE(isNoted("room.fbx", "several textures of one kind"));
}

TEST(MaterialLosses, NamesTheFirstAndCountsAll) {
    MaterialLosses losses;
    for (const char* name : {"A", "B\n", "C", "D", "E"})
        losses.add(MaterialLoss::clearCoat, name);
    ImportNotes notes;
    losses.writeTo(notes, "room.gltf");
    ASSERT_EQ(notes.notes().size(), 1U);
    EXPECT_EQ(notes.notes()[0],
              (ImportNote{"room.gltf",
                          "5 materials (\"A\", \"B\\n\", \"C\", ...) have a clear coat, which is left out"}));
}

TEST_F(StandardMaterialTest, AnEmissionColourWithoutAMapIsTold) {
    numbers("$clr.emissive", {0, 0, 0});
    convert();
    EXPECT_FALSE(isNoted("room.fbx", "an emission colour"));
    numbers("$clr.emissive", {1, 0, 0});
    convert();
    EXPECT_TRUE(isNoted("room.fbx", "1 material (\"M\") has an emission colour without a map"));
    notes_ = {};
    texture(aiTextureType_EMISSIVE, "glow.png");
    convert();
    EXPECT_FALSE(isNoted("room.fbx", "an emission colour"));
}

}  // namespace
}  // namespace velinor
