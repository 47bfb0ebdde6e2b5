#include "materials/material_script.h"

#include "base/text.h"
#include "materials/materials_test_support.h"

namespace velinor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class MaterialScriptTest : public MaterialsTest {
  protected:
    // Writes the material in that place of the scene; the missing one for none.
    bool write(std::optional<int> place) {
        makeHostOnce();
        host::IGameMaterial* written = place ? material(*place) : nullptr;
        return writeMaterialScript(context(), written, variant(written));
    }

  private:
    void makeHostOnce() {
        if (!host_) makeHost();
    }
};

// What the writer gives for a material called "Box" with a texture for each unit.
constexpr std::string_view kOpaqueScript =
    "material Box\n"
    "{\n"
    "\ttechnique glsl\n"
    "\t{\n"
    "\t\tpass qen_pbs\n"
    "\t\t{\n"
    "\t\t\t// scene_blend alpha_blend\n"
    "\t\t\t// depth_write off\n"
    "\t\t\t// alpha_rejection greater_equal 128\n"
    "\t\t\t// cull_hardware none\n"
    "\t\t\t// cull_software none\n"
    "\n"
    "\t\t\tvertex_program_ref physicallybased_vp\n"
    "\t\t\t{\n"
    "\t\t\t\tparam_named texture_offset float2 1.000000 1.000000\n"
    "\t\t\t\tparam_named tile_count float 1\n"
    "\t\t\t\tparam_named tile_count_metallic float 1\n"
    "\t\t\t\tparam_named tile_count_normal float 1\n"
    "\t\t\t\tparam_named tile_count_roughness float 1\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\tfragment_program_ref physicallybased_fp\n"
    "\t\t\t{\n"
    "\t\t\t\tparam_named refl_blur_bias float 0.300000\n"
    "\t\t\t\tparam_named reflection_power float 0.500000\n"
    "\t\t\t\tparam_named roughness_bias float 0.000000\n"
    "\t\t\t\tparam_named spec_multiplier float 0.500000\n"
    "\t\t\t\tparam_named surface_reflectivity float2 1.000000 1.000000\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit diffuse_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias diffuse_map\n"
    "\t\t\t\ttexture d.png\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit normal_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias normal_map\n"
    "\t\t\t\ttexture n.png\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit roughness_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias roughness_map\n"
    "\t\t\t\ttexture r.png\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit metallic_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias metallic_map\n"
    "\t\t\t\ttexture m.png\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit reflection_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias reflection_map\n"
    "\t\t\t\tcubic_texture c.dds combinedUVW\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t\tenv_map cubic_reflection\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit light_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias light_map\n"
    "\t\t\t\ttexture l.png\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t}\n"
    "\n"
    "\t\t\ttexture_unit ambientocclusion_map\n"
    "\t\t\t{\n"
    "\t\t\t\ttexture_alias ambientocclusion_map\n"
    "\t\t\t\ttexture a.png\n"
    "\t\t\t\tmax_anisotropy 8\n"
    "\t\t\t}\n"
    "\n"
    "\t\t}\n"
    "\t}\n"
    "}\n";

constexpr MaterialTextures kTextures{.diffuse = "d.png",
                                     .normal = "n.png",
                                     .roughness = "r.png",
                                     .metallic = "m.png",
                                     .reflection = "c.dds",
                                     .light = "l.png",
                                     .ambientOcclusion = "a.png"};

TEST(MaterialScriptText, OfAnOpaqueMaterial) {
    EXPECT_EQ(materialScriptText("Box", false, kTextures), kOpaqueScript);
}

TEST(MaterialScriptText, OfATransparentMaterialDiffersInThreeLines) {
    std::string expected(kOpaqueScript);
    for (const std::string line :
         {"scene_blend alpha_blend\n", "cull_hardware none\n", "cull_software none\n"})
        expected.replace(expected.find("// " + line), line.size() + 3, line);
    EXPECT_EQ(materialScriptText("Box", true, kTextures), expected);
    EXPECT_THAT(expected, HasSubstr("\t\t\tscene_blend alpha_blend\n\t\t\t// depth_write off\n"
                                    "\t\t\t// alpha_rejection greater_equal 128\n"
                                    "\t\t\tcull_hardware none\n\t\t\tcull_software none\n\n"));
}

TEST_F(MaterialScriptTest, OfTheMissingMaterialHasDefaultColours) {
    EXPECT_TRUE(write(std::nullopt));
    EXPECT_EQ(placedFile("default.material"),
              asTextFile(materialScriptText("default", false,
                                            {.diffuse = "255255255255.png",
                                             .normal = "127127255255.png",
                                             .roughness = "000000000000.png",
                                             .metallic = "000000000000.png",
                                             .reflection = "default.dds",
                                             .light = "255255255255.png",
                                             .ambientOcclusion = "255255255255.png"}) +
                         "\n"));
    EXPECT_THAT(placedNames(), ElementsAre("000000000000.png", "127127255255.png", "255255255255.png",
                                           "default.dds", "default.material"));
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(MaterialScriptTest, IsNamedAfterTheSanitisedMaterial) {
    addStandard(u"Brick Wall #2");
    EXPECT_TRUE(write(0));
    EXPECT_THAT(placedFile("Brick_Wall__2.material"), StartsWith(asTextFile("material Brick_Wall__2\n{\n")));
    EXPECT_THAT(placedFile("Brick_Wall__2.material"), EndsWith(asTextFile("\n}\n\n")));
}

TEST_F(MaterialScriptTest, OfACyrillicNameIsTwoUnderscoresALetter) {
    addStandard(u"Куб");
    EXPECT_TRUE(write(0));
    EXPECT_THAT(placedFile("______.material"), StartsWith(asTextFile("material ______\n")));
}

TEST_F(MaterialScriptTest, SanitisesTheNameOfTheVariant) {
    EXPECT_TRUE(writeMaterialScript(context(), nullptr, {"a b", "default.dds"}));
    EXPECT_THAT(placedFile("a_b.material"), StartsWith(asTextFile("material a_b\n")));
}

TEST_F(MaterialScriptTest, IsTransparentByTheAlphaOfTheColour) {
    addPhysical(u"Glass");
    setProperty(scene_.materials[0], u"transparency", 0.5F);
    EXPECT_TRUE(write(0));
    EXPECT_THAT(placedFile("Glass.material"), HasSubstr(asTextFile("\t\t\tscene_blend alpha_blend\n")));
    EXPECT_THAT(placedFile("Glass.material"),
                HasSubstr(asTextFile("\t\t\tcull_hardware none\n\t\t\tcull_software none\n\n")));
    EXPECT_THAT(told(), ElementsAre("material-transparent | Glass | the diffuse alpha is 0.500000"));
}

TEST_F(MaterialScriptTest, IsTransparentForEveryAlphaButOne) {
    for (const float alpha : {0.0F, 0.999F, 1.5F, -1.0F, std::numeric_limits<float>::quiet_NaN(), 1.0F})
        addStandard(u"S").opacity = alpha;
    for (int place = 0; place < 6; ++place) {
        EXPECT_TRUE(write(place));
        EXPECT_THAT(placedFile("S.material"),
                    HasSubstr(place < 5 ? "\t\tscene_blend alpha" : "\t// scene_blend"));
    }
}

// What the image library of this system, which has a version of its own, says of a PNG file without its end.
constexpr std::string_view kCutPngText = kIsWindows ? "pngload: end of stream" : "not enough data";

TEST_F(MaterialScriptTest, TellsWherePixelsLeaveADoubt) {
    TestImage<std::uint8_t> image{64, 64, 4, std::vector<std::uint8_t>(64 * 64 * 4, 255)};
    saveImage(pixel({128, 0}), sources_ / "grey.png");
    saveImage(image, sources_ / "whole.png");
    const std::string whole = readFile(sources_ / "whole.png");
    writeFile(sources_ / "cut.png", whole.substr(0, whole.size() - 30));
    for (const char* name : {"grey.png", "cut.png"}) {
        const SnapshotRef map = addBitmap(name);
        addStandard(u"S").textureMaps = {{1, map}};
    }
    for (const int place : {0, 1, 0})
        EXPECT_TRUE(write(place));
    EXPECT_EQ(report_.entries().at(0).id, MessageId::textureAlphaDoubtful);
    EXPECT_THAT(report_.entries().at(0).detail, StartsWith("grey.png: "));
    EXPECT_THAT(told(), Contains("texture-alpha-doubtful | S | cut.png: " + std::string(kCutPngText)));
}

TEST_F(MaterialScriptTest, IsTransparentByTheAlphaOfThePixels) {
    saveImage(pixel({1, 2, 3, 63}), sources_ / "leaf.png");
    const SnapshotRef map = addBitmap("leaf.png");
    addStandard(u"Leaf").textureMaps = {{1, map}};
    EXPECT_TRUE(write(0));
    EXPECT_THAT(placedFile("Leaf.material"), HasSubstr(asTextFile("\t\t\tscene_blend alpha_blend\n")));
    EXPECT_THAT(placedFile("Leaf.material"), HasSubstr(asTextFile("\t\t\t\ttexture leaf.png\n")));
    EXPECT_THAT(told(), Contains("material-transparent | Leaf | low alpha values in leaf.png"));
}

TEST_F(MaterialScriptTest, IsOpaqueWithABitmapWhateverTheAlphaOfTheColour) {
    saveImage(pixel({1, 2, 3}), sources_ / "wall.jpg");
    saveImage(pixel({1, 2, 3, 64}), sources_ / "wall.png");
    for (const char* name : {"wall.jpg", "wall.png", "nowhere.png"}) {
        const SnapshotRef map = addBitmap(name);
        addStandard(u"Wall").textureMaps = {{1, map}};
        scene_.materials.back().opacity = 0.25F;
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(write(i));
        EXPECT_THAT(placedFile("Wall.material"), HasSubstr(asTextFile("\t\t\t// scene_blend alpha_blend\n")))
            << i;
    }
}

TEST_F(MaterialScriptTest, TestsTheSanitisedCopyOfABitmap) {
    saveImage(pixel({1, 2, 3, 0}), sources_ / "my tex.PNG");
    const SnapshotRef map = addBitmap("my tex.PNG");
    addStandard(u"Wall").textureMaps = {{1, map}};
    EXPECT_TRUE(write(0));
    EXPECT_THAT(placedFile("Wall.material"), HasSubstr(asTextFile("\t\t\t\ttexture my_tex.PNG\n")));
    EXPECT_THAT(placedFile("Wall.material"), HasSubstr(asTextFile("\t\t\tscene_blend alpha_blend\n")));
    EXPECT_EQ(placedFile("my_tex.PNG"), readFile(sources_ / "my tex.PNG"));
}

TEST_F(MaterialScriptTest, TestsABitmapAnewThatAnotherHasReplaced) {
    std::filesystem::create_directory(sources_ / "b");
    saveImage(pixel({1, 2, 3, 0}), sources_ / "a b.png");
    saveImage(pixel({1, 2, 3, 255}), sources_ / "b" / "a b.png");
    const SnapshotRef low = addBitmap("a b.png");
    const SnapshotRef high = addBitmap("b/a b.png");
    addStandard(u"Low").textureMaps = {{1, low}};
    addStandard(u"High").textureMaps = {{1, high}};
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(write(0));
        EXPECT_TRUE(write(1));
        EXPECT_THAT(placedFile("Low.material"), HasSubstr(asTextFile("\t\t\tscene_blend alpha_blend\n")));
        EXPECT_THAT(placedFile("High.material"), HasSubstr(asTextFile("\t\t\t// scene_blend alpha_blend\n")));
        EXPECT_EQ(placedFile("a_b.png"), readFile(sources_ / "b" / "a b.png")) << "the later wins";
    }
}

TEST_F(MaterialScriptTest, OfAnotherClassIsAListingOnly) {
    SnapshotMaterial multi;
    multi.className = u"Multi/Sub-Object";
    multi.name = u"Many Things";
    multi.properties = {{u"Größe", 1.0F}, {u"names", std::u16string(u"x")}, {u"map", SnapshotMapProperty{}}};
    scene_.materials.push_back(multi);
    EXPECT_FALSE(write(0));
    EXPECT_THAT(placedNames(), ElementsAre("Many_Things.material_properties"));
    EXPECT_EQ(placedFile("Many_Things.material_properties"), asTextFile("Größe\nnames\nmap\n\n"));
    EXPECT_THAT(told(), ElementsAre("material-class-not-exported | Many Things | Multi/Sub-Object"));
    EXPECT_EQ(
        report_.written(),
        (std::vector<WrittenFile>{{target("Many_Things.material_properties"), kIsWindows ? 23U : 19U}}));
    EXPECT_THAT(pauses_, IsEmpty());
}

TEST_F(MaterialScriptTest, OfAnotherClassWithoutPropertiesIsOneEmptyLine) {
    SnapshotMaterial plain;
    plain.className = u"standard";  // the case counts
    plain.name = u"Plain";
    scene_.materials.push_back(plain);
    EXPECT_FALSE(write(0));
    EXPECT_EQ(placedFile("Plain.material_properties"), asTextFile("\n"));
}

TEST_F(MaterialScriptTest, ReplacesThatOfAnEarlierMaterialAndTellsBoth) {
    addStandard(u"Brick 1");
    addStandard(u"Brick#1");
    addStandard(u"default");
    EXPECT_TRUE(write(std::nullopt));
    for (const int place : {0, 1, 1, 2})
        EXPECT_TRUE(write(place));
    EXPECT_THAT(
        told(),
        ElementsAre("material-names-equal | Brick#1 | Brick_1.material: replaces that of \"Brick 1\"",
                    "material-names-equal | default | default.material: replaces that of \"default\""));
    EXPECT_EQ(std::ranges::count(report_.written(), target("Brick_1.material"), &WrittenFile::path), 1);
}

TEST_F(MaterialScriptTest, IsReportedWhereItCannotBeWritten) {
    std::filesystem::create_directory(target("Box.material"));
    addStandard(u"Box");
    EXPECT_TRUE(write(0));
    EXPECT_THAT(told(),
                ElementsAre("file-not-written | " + utf8Path(target("Box.material")) + " | " + kNoFileText));
    EXPECT_FALSE(std::ranges::any_of(
        report_.written(), [](const WrittenFile& file) { return file.path.extension() == ".material"; }));
}

TEST_F(MaterialScriptTest, OfANameOfOneMegabyteIsReported) {
    const std::u16string name(1 << 20, u'n');
    addStandard(name);
    SnapshotMaterial other;
    other.className = u"Other";
    other.name = name;
    scene_.materials.push_back(other);
    EXPECT_TRUE(write(0));
    EXPECT_FALSE(write(1));
    EXPECT_EQ(report_.entries().size(), 3U);
    EXPECT_EQ(report_.count(Severity::error), 2U);
    EXPECT_EQ(report_.entries().front().detail,
              kIsWindows ? "No such file or directory" : "File name too long");
}

TEST_F(MaterialScriptTest, AdvancesTheProgressByOneEach) {
    class Counting final : public Progress {
      public:
        void beginPhase(std::string_view, std::uint64_t) override {}
        void advance(std::uint64_t amount) override { sum += amount; }
        std::uint64_t sum = 0;
    };
    writeFile(sources_ / "large.png", std::string(1 << 20, 'x'));
    const SnapshotRef map = addBitmap("large.png");
    addStandard(u"Box").textureMaps = {{2, map}};
    makeHost();
    Counting counting;
    const MaterialWriterContext watched{folders_, settings_, *host_, report_, placed_, counting};
    EXPECT_TRUE(writeMaterialScript(watched, material(0), variant(material(0))));
    EXPECT_EQ(counting.sum, 1U);
}

}  // namespace
}  // namespace velinor
