#include "hosts/ase/ase_materials.h"

#include <gmock/gmock.h>

#include "hosts/ase/ase_test_support.h"
#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string list(const std::string& materials) {
    return kAseHeader + aseBlock("MATERIAL_LIST", "*MATERIAL_COUNT 1\n" + materials) + aseHelper("A");
}

std::string material(const std::string& name, const std::string& content, int number = 0) {
    return aseBlock("MATERIAL " + std::to_string(number), "*MATERIAL_NAME \"" + name + "\"\n" + content);
}

const std::string kStandardClass = "*MATERIAL_CLASS \"Standard\"\n";

std::string map(const std::string& keyword, const std::string& mapClass, const std::string& more) {
    return aseBlock(keyword, "*MAP_NAME \"Map #1\"\n*MAP_CLASS \"" + mapClass + "\"\n" + more);
}

std::string bitmap(const std::string& keyword, const std::string& file) {
    return map(keyword, "Bitmap", "*MAP_AMOUNT 1.0000\n*BITMAP \"" + file + "\"\n*MAP_TYPE Screen\n");
}

TEST(AseMaterials, AStandardMaterialHasItsColoursAndNumbers) {
    const ReadAse read = readAseText(list(material(
        "Oak", kStandardClass +
                   "*MATERIAL_AMBIENT 1 1 1\n*MATERIAL_DIFFUSE 0.1 0.2 0.3\n*MATERIAL_SPECULAR 0.4 0.5 0.6\n"
                   "*MATERIAL_SHINE 0.25\n*MATERIAL_SHINESTRENGTH 0.7\n*MATERIAL_TRANSPARENCY 0.75\n"
                   "*MATERIAL_SHADING Blinn\n*MATERIAL_TWOSIDED\n*MATERIAL_FALLOFF In\n")));
    const SnapshotMaterial& oak = read.material(u"Oak");
    EXPECT_EQ(oak.className, u"Standard");
    EXPECT_EQ(oak.diffuse, (host::Point3{0.1F, 0.2F, 0.3F}));
    EXPECT_EQ(std::get<host::Point3>(oak.specular), (host::Point3{0.4F, 0.5F, 0.6F}));
    EXPECT_EQ(oak.opacity, 0.25F);
    EXPECT_EQ(oak.glossiness, 0.25F);
    EXPECT_TRUE(oak.properties.empty());
    EXPECT_TRUE(oak.subMaterials.empty());
}

TEST(AseMaterials, WithoutNumbersAMaterialIsOpaqueAndOfTheUsualClass) {
    const ReadAse read = readAseText(list(material("Plain", "")));
    EXPECT_EQ(read.material(u"Plain").className, u"Standard");
    EXPECT_EQ(read.material(u"Plain").opacity, 1.F);
}

TEST(AseMaterials, EachKeywordOfAMapFillsItsSlot) {
    struct Case {
        const char* keyword;
        std::int32_t slot;
    };
    for (const Case& c : {
             Case{"MAP_AMBIENT", 0},
             Case{"MAP_DIFFUSE", 1},
             Case{"MAP_SPECULAR", 2},
             Case{"MAP_SHINE", 3},
             Case{"MAP_SHINESTRENGTH", 4},
             Case{"MAP_SELFILLUM", 5},
             Case{"MAP_OPACITY", 6},
             Case{"MAP_FILTERCOLOR", 7},
             Case{"MAP_BUMP", 8},
             Case{"MAP_REFLECT", 9},
             Case{"MAP_REFRACT", 10},
         }) {
        const ReadAse read = readAseText(list(
            material("M", kStandardClass + map(c.keyword, "Bitmap", "*MAP_SUBNO 77\n*BITMAP \"a.png\"\n"))));
        EXPECT_THAT(read.material(u"M").textureMaps, ElementsAre(SnapshotTextureMap{c.slot, 0})) << c.keyword;
    }
    const ReadAse numbered = readAseText(list(
        material("M", kStandardClass + map("MAP_GENERIC", "Bitmap", "*MAP_SUBNO 11\n*BITMAP \"a.png\"\n"))));
    EXPECT_THAT(numbered.material(u"M").textureMaps, ElementsAre(SnapshotTextureMap{11, 0}));
}

TEST(AseMaterials, MapsComeInTheOrderOfTheFile) {
    const ReadAse read =
        readAseText(list(material("M", kStandardClass + bitmap("MAP_BUMP", "b.png") +
                                           bitmap("MAP_DIFFUSE", "a.png") + bitmap("MAP_DIFFUSE", "c.png"))));
    EXPECT_THAT(read.material(u"M").textureMaps,
                ElementsAre(SnapshotTextureMap{8, 0}, SnapshotTextureMap{1, 1}, SnapshotTextureMap{1, 2}));
    EXPECT_EQ(read.scene.maps[1].bitmap, u"a.png");
}

TEST(AseMaterials, MapsWithinMapsStandAtTheirNumbers) {
    const ReadAse read = readAseText(list(material(
        "M", kStandardClass +
                 map("MAP_BUMP", "Normal Bump",
                     "*MAP_SUBNO 8\n" + map("MAP_GENERIC", "Bitmap", "*MAP_SUBNO 2\n*BITMAP \"b.png\"\n") +
                         map("MAP_GENERIC", "Mix", "*MAP_SUBNO 0\n" + bitmap("MAP_GENERIC", "n.png")) +
                         map("MAP_GENERIC", "Bitmap", "*MAP_SUBNO 16\n") +
                         map("MAP_GENERIC", "Bitmap", "*MAP_SUBNO 2147483647\n")))));
    ASSERT_EQ(read.scene.maps.size(), 6U);
    EXPECT_EQ(read.scene.maps[0].className, u"Normal Bump");
    EXPECT_THAT(read.scene.maps[0].subMaps,
                ElementsAre(std::optional<SnapshotRef>(2), std::nullopt, std::optional<SnapshotRef>(1)));
    EXPECT_EQ(read.scene.maps[2].className, u"Mix");
    EXPECT_THAT(read.scene.maps[2].subMaps, ElementsAre(std::optional<SnapshotRef>(3)));
    EXPECT_EQ(read.scene.maps[3].bitmap, u"n.png");
    EXPECT_THAT(read.material(u"M").textureMaps, ElementsAre(SnapshotTextureMap{8, 0}));
}

TEST(AseMaterials, AMapThatNamesABitmapIsOneWithoutSayingSo) {
    const ReadAse read = readAseText(
        list(material("M", aseBlock("MAP_DIFFUSE", "*BITMAP \"a.png\"\n") + aseBlock("MAP_BUMP", ""))));
    EXPECT_EQ(read.scene.maps[0].className, u"Bitmap");
    EXPECT_EQ(read.scene.maps[1].className, u"");
}

TEST(AseMaterials, AMultiMaterialHasItsSubMaterialsAtTheirNumbers) {
    const std::string multi = material(
        "Multi", "*MATERIAL_CLASS \"Multi/Sub-Object\"\n*NUMSUBMTLS 4\n" +
                     aseBlock("SUBMATERIAL 0",
                              "*MATERIAL_NAME \"Red\"\n" + kStandardClass + bitmap("MAP_DIFFUSE", "r.png")) +
                     aseBlock("SUBMATERIAL 3",
                              "*MATERIAL_NAME \"Inner\"\n*NUMSUBMTLS 1\n" +
                                  aseBlock("SUBMATERIAL 0", "*MATERIAL_NAME \"Deep\"\n" + kStandardClass)));
    const ReadAse read = readAseText(list(multi + material("Last", kStandardClass, 1)) +
                                     aseMeshObject("Mesh", aseTriangle(), "*MATERIAL_REF 0\n") +
                                     aseMeshObject("Other", aseTriangle(), "*MATERIAL_REF 1\n"));
    ASSERT_EQ(read.scene.materials.size(), 5U);
    const SnapshotMaterial& found = read.scene.materials[0];
    EXPECT_EQ(found.className, u"Multi/Sub-Object");
    EXPECT_THAT(found.subMaterials, ElementsAre(SnapshotSubMaterial{0, 1U}, SnapshotSubMaterial{3, 2U}));
    EXPECT_TRUE(found.textureMaps.empty());
    EXPECT_EQ(read.scene.materials[1].name, u"Red");
    EXPECT_EQ(read.scene.materials[1].textureMaps.size(), 1U);
    EXPECT_EQ(read.scene.materials[2].className, u"Multi/Sub-Object") << "its class by its sub-materials";
    EXPECT_THAT(read.scene.materials[2].subMaterials, ElementsAre(SnapshotSubMaterial{0, 3U}));
    EXPECT_EQ(read.scene.materials[3].name, u"Deep");
    EXPECT_EQ(read.node(u"Mesh").material, 0U);
    EXPECT_EQ(read.node(u"Other").material, 4U);
}

TEST(AseMaterials, APhysicalMaterialHasWhatTheFileHoldsOfIt) {
    const ReadAse read = readAseText(list(material(
        "Glass",
        "*MATERIAL_CLASS \"Physical Material\"\n*MATERIAL_DIFFUSE 0.1 0.2 0.3\n*MATERIAL_TRANSPARENCY 0.25\n"
        "*MATERIAL_SHINE 0.75\n" +
            bitmap("MAP_DIFFUSE", "d.png") + map("MAP_GENERIC", "Bitmap", "*MAP_SUBNO 21\n"))));
    const SnapshotMaterial& glass = read.material(u"Glass");
    EXPECT_EQ(glass.className, u"Physical Material");
    const std::vector<SnapshotProperty> expected{
        {u"base_color_map", SnapshotMapProperty{0U}},
        {u"base_color", host::Point4{0.1F, 0.2F, 0.3F, 1}},
        {u"transparency", 0.25F},
        {u"bump_map", SnapshotMapProperty{}},
        {u"roughness_map", SnapshotMapProperty{}},
        {u"roughness", 0.25F},
        {u"metalness_map", SnapshotMapProperty{}},
        {u"metalness", 0.F},
        {u"emission_map", SnapshotMapProperty{}},
    };
    EXPECT_EQ(glass.properties, expected);
    EXPECT_EQ(read.notesOf("room.ase", "1 material (\"Glass\") has the class Physical Material"), 1);
}

// Their numbers are no slots of a Standard material, and there is nothing else to know them by.
TEST(AseMaterials, NumberedMapsOfAPhysicalMaterialAreLeftOut) {
    std::string maps;
    for (const char* number : {"0", "1", "4", "5", "8"}) {
        maps +=
            map("MAP_GENERIC", "Bitmap",
                "*MAP_SUBNO " + std::string(number) + "\n*MAP_AMOUNT 0.5\n*UVW_ANGLE 1\n*BITMAP \"a.png\"\n");
    }
    maps += bitmap("MAP_BUMP", "b.png") + map("MAP_GENERIC", "Bitmap", "*MAP_SUBNO 8\n");
    const ReadAse read = readAseText(list(material("M", maps + "*MATERIAL_CLASS \"Physical Material\"\n")));
    const SnapshotMaterial& found = read.material(u"M");
    EXPECT_THAT(found.textureMaps, ElementsAre(SnapshotTextureMap{8, 5}));
    EXPECT_EQ(read.notesOf("M", "\"a.png\" is missing"), 0) << "nobody needs it";
    EXPECT_EQ(read.notesOf("M", "\"b.png\" is missing"), 1);
    for (const char* note : {"amount", "moved"})
        EXPECT_EQ(read.notesOf("room.ase", note), 0) << note;
    for (const SnapshotProperty& property : found.properties) {
        const auto* held = std::get_if<SnapshotMapProperty>(&property.value);
        if (held == nullptr) continue;
        const bool isBump = property.name == u"bump_map";
        EXPECT_EQ(held->map, isBump ? std::optional<SnapshotRef>(5) : std::nullopt) << toUtf8(property.name);
    }
}

TEST(AseMaterials, OtherClassesKeepTheirNames) {
    const ReadAse read = readAseText(list(material("M", "*MATERIAL_CLASS \"Arch & Design\"\n")));
    EXPECT_EQ(read.material(u"M").className, u"Arch & Design");
}

TEST(AseMaterials, PlacementOfMapsIsToldOnceAFile) {
    const std::string still =
        "*UVW_U_OFFSET 0,0000\n*UVW_V_OFFSET 0\n*UVW_U_TILING 1.0\n*UVW_V_TILING 1\n*UVW_ANGLE 0\n*UVW_BLUR "
        "2\n";
    for (const char* moved : {"*UVW_U_OFFSET 0.5\n", "*UVW_V_OFFSET 1\n", "*UVW_U_TILING 2\n",
                              "*UVW_V_TILING 0\n", "*UVW_ANGLE 1\n"}) {
        const std::string one = material("M", map("MAP_DIFFUSE", "Bitmap", still));
        const std::string two =
            material("N", map("MAP_BUMP", "Bitmap", still + moved) + map("MAP_DIFFUSE", "Bitmap", moved), 1);
        EXPECT_EQ(readAseText(list(one)).notesOf("room.ase", "moved, turned or scaled"), 0);
        EXPECT_EQ(readAseText(list(one + two))
                      .notesOf("room.ase", "1 material (\"N\") has textures that are moved"),
                  1);
    }
}

TEST(AseMaterials, WhatAPackageCannotExpressIsToldOnceAKind) {
    struct Case {
        std::string content;
        const char* note;
        int count;
    };
    const std::string map = aseBlock("MAP_DIFFUSE", "*MAP_AMOUNT 0.3\n");
    for (const auto& [content, note, count] : {
             Case{"*MATERIAL_TWOSIDED\n", "have two sides", 1},
             Case{"", "two sides", 0},
             Case{"*MATERIAL_SELFILLUM 0.5\n", "have an emission colour without a map", 1},
             Case{"*MATERIAL_SELFILLUM 0,0000\n", "emission", 0},
             Case{"*MATERIAL_SELFILLUM\n*MATERIAL_FALLOFF In\n", "emission", 0},
             Case{aseBlock("MAP_DIFFUSE", "*MAP_AMOUNT\n*UVW_ANGLE\n"), "amount", 0},
             Case{"*MATERIAL_SELFILLUM 0.5\n" + bitmap("MAP_SELFILLUM", "a.png"), "emission", 0},
             Case{map + map, "have maps of an amount other than 1", 1},
             Case{bitmap("MAP_DIFFUSE", "a.png"), "amount", 0},
             Case{aseBlock("MAP_BUMP", "*MAP_AMOUNT 0.3000\n"), "amount", 0},
             Case{aseBlock("MAP_BUMP", "*MAP_AMOUNT 0.5\n"), "have maps of an amount other than 1", 1},
         }) {
        const ReadAse read = readAseText(list(material("M", content) + material("N", content, 1)));
        const std::string names = count == 0 ? "" : "2 materials (\"M\", \"N\") ";
        EXPECT_EQ(read.notesOf("room.ase", names + note), count) << content;
    }
}

TEST(AseMaterials, BitmapsAreFoundBesideTheSceneAndMissingOnesToldOnce) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "wood.png").put('x');
    const ReadAse read = readAseText(
        list(material("M", bitmap("MAP_DIFFUSE", "D:\\work\\WOOD.png") + bitmap("MAP_BUMP", "..\\gone.png") +
                               bitmap("MAP_OPACITY", "..\\gone.png") + bitmap("MAP_SHINE", ""))),
        folder.path() / "room.ase");
    // Where the system takes the names for equal, the name that was asked for is the file's.
    EXPECT_EQ(toPath(read.scene.maps[0].bitmap), folder.path() / (kIsWindows ? "WOOD.png" : "wood.png"));
    EXPECT_EQ(read.scene.maps[1].bitmap, u"..\\gone.png");
    EXPECT_EQ(read.scene.maps[3].bitmap, u"");
    EXPECT_EQ(read.notesOf("M", "\"..\\gone.png\" is missing"), 1);
}

TEST(AseMaterials, AWrongReferenceIsRefusedAtItsPlace) {
    EXPECT_EQ(aseRefusal(kAseHeader + "*GEOMOBJECT {\n*NODE_NAME \"A\"\n*MATERIAL_REF 2\n}\n"),
              "room.ase: line 4, column 15: material 2 does not exist; the file has 0");
    EXPECT_THAT(aseRefusal(list(material("M", "") + material("N", ""))),
                HasSubstr("material 0 is there twice"));
    EXPECT_EQ(
        readAseText(kAseHeader + aseMeshObject("A", aseTriangle(), "*MATERIAL_REF -1\n")).node(u"A").material,
        std::nullopt);
}

TEST(AseMaterials, DepthCostsNoStack) {
    constexpr int kDepth = 200000;
    std::string deep;
    for (int i = 0; i < kDepth; ++i)
        deep += i % 2 == 0 ? "*SUBMATERIAL 1 {" : "*SUBMATERIAL 0 {";
    for (int i = 0; i < kDepth; ++i)
        deep += "*MAP_GENERIC { *MAP_SUBNO 0 ";
    deep += std::string(std::size_t{2} * kDepth, '}');
    const std::string text = list(material("M", deep));
    NoProgress progress;
    ImportNotes notes;
    const SceneSnapshot scene = readAse(text, "room.ase", {}, progress, notes);
    EXPECT_EQ(scene.materials.size(), kDepth + 1U);
    EXPECT_EQ(scene.maps.size(), std::size_t{kDepth});
}

}  // namespace
}  // namespace velinor
