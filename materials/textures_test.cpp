#include "materials/textures.h"

#include "base/text.h"
#include "materials/material_script.h"
#include "materials/materials_test_support.h"
#include "materials/solid_color.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

class TexturesTest : public MaterialsTest {
  protected:
    // A slot that the file of that name in the scene's folder feeds.
    ChannelSlot slotOf(const std::string& file) const {
        const fs::path path = sources_ / file;
        return {{0.25F, 0.25F, 0.25F, 1}, utf8Path(path), utf8Path(path.filename()), path.u16string()};
    }

    // Prepares the one channel `key`.
    ChannelSlot prepare(const ChannelSlot& slot, const std::string& key = "diffuse") {
        ChannelTable channels{{key, slot}};
        prepareTextures(context(), "M", channels);
        return channels[key];
    }
};

TEST(QuantisedColor, IsCutTowardsZeroAndNotClamped) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    struct Case {
        float component;
        std::int32_t quantised;
        const char* digits;
    };
    for (const auto& [component, quantised, digits] :
         {Case{0, 0, "000"}, Case{1, 255, "255"}, Case{0.5F, 127, "127"}, Case{0.999F, 254, "254"},
          Case{0.01F, 2, "002"}, Case{1.5F, 382, "382"}, Case{-0.001F, 0, "000"}, Case{-0.01F, -2, "-02"},
          Case{-2, -510, "-510"}, Case{kNan, 0, "000"}, Case{1e30F, kMost, "2147483647"},
          Case{-1e30F, kLeast, "-2147483648"}, Case{kInfinity, kMost, "2147483647"},
          Case{-kInfinity, kLeast, "-2147483648"}, Case{8e6F, 2040000000, "2040000000"}}) {
        const QuantisedColor color = quantise({component, 0, 1, component});
        EXPECT_EQ(color, (QuantisedColor{quantised, 0, 255, quantised})) << component;
        EXPECT_EQ(solidColorFileName(color), std::string(digits) + "000255" + digits + ".png") << component;
    }
}

TEST_F(TexturesTest, AreImagesOfTheColourWithoutABitmap) {
    const ChannelSlot slot = prepare({{1.5F, 0.5F, -0.01F, 1}}, "roughness");
    EXPECT_EQ(slot, (ChannelSlot{{1.5F, 0.5F, -0.01F, 1}, "", "382127-02255.png"}));
    TestImage<std::uint8_t> expected{10, 10, 4, {}};
    for (int i = 0; i < 100; ++i) {
        for (const std::uint8_t sample : {126, 127, 254, 255})  // 382 modulo 256, 127, -2 modulo 256, 255
            expected.samples.push_back(sample);
    }
    EXPECT_EQ(loadImage(target(slot.textureFileName)), expected);
    EXPECT_THAT(pauses_, ElementsAre(100));
    EXPECT_EQ(report_.written(), (std::vector<WrittenFile>{{target(slot.textureFileName),
                                                            fs::file_size(target(slot.textureFileName))}}));
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(TexturesTest, OfColoursBeyondAllBoundsAreWritten) {
    const ChannelSlot slot = prepare({{1e30F, -1e30F, std::numeric_limits<float>::quiet_NaN(), 2}}, "ao");
    EXPECT_EQ(slot.textureFileName, "2147483647-2147483648000510.png");
    EXPECT_EQ(loadImage(target(slot.textureFileName)).samples[0], 255);
    EXPECT_EQ(loadImage(target(slot.textureFileName)).samples[1], 0);
    EXPECT_EQ(loadImage(target(slot.textureFileName)).samples[3], 254);
}

TEST_F(TexturesTest, OfOneColourAreOneFile) {
    ASSERT_EQ(prepare({{1, 1, 1, 1}}, "light").textureFileName, "255255255255.png");
    const std::string first = placedFile("255255255255.png");
    EXPECT_EQ(prepare({{1, 1, 1, 1}}, "ao").textureFileName, "255255255255.png");
    EXPECT_THAT(pauses_, ElementsAre(100)) << "one image, one pause";
    EXPECT_EQ(placedFile("255255255255.png"), first);
    EXPECT_EQ(report_.written().size(), 1U);
}

TEST_F(TexturesTest, LeaveAFileThatBearsAColoursName) {
    writeFile(target("255255255255.png"), "here before");
    EXPECT_EQ(prepare({{1, 1, 1, 1}}, "ao").textureFileName, "255255255255.png");
    EXPECT_EQ(placedFile("255255255255.png"), "here before");
    EXPECT_THAT(pauses_, IsEmpty());
}

TEST_F(TexturesTest, OfAThousandMaterialsOfOneColourAreThreeFiles) {
    for (int i = 0; i < 1000; ++i) {
        SnapshotMaterial& standard = addStandard(u"M" + std::u16string(static_cast<std::size_t>(i), u'x'));
        standard.name.resize(std::min<std::size_t>(standard.name.size(), 200));
        standard.diffuse = {1, 1, 1};
    }
    makeHost();
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(writeMaterialScript(context(), material(i), {"M" + std::to_string(i), "default.dds"}));
    EXPECT_EQ(pauses_.size(), 3U) << "white, the flat normal, no gloss";
    EXPECT_EQ(placedNames().size(), 1000U + 3U + 1U);
}

TEST_F(TexturesTest, AreReportedWhereTheyCannotBeGenerated) {
    fs::remove(target(""));
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(prepare({{1, 1, 1, 1}}, "ao").textureFileName, "255255255255.png");
    ASSERT_EQ(report_.entries().size(), 1U);
    EXPECT_EQ(report_.entries()[0].id, MessageId::fileNotWritten);
    EXPECT_EQ(report_.entries()[0].subject, utf8Path(target("255255255255.png")));
    EXPECT_NE(report_.entries()[0].detail, "");
    EXPECT_THAT(pauses_, ElementsAre(100, 100));
    EXPECT_THAT(report_.written(), IsEmpty());
}

TEST_F(TexturesTest, AreGeneratedInFoldersWithBrackets) {
    std::vector<const char*> folders{"a[1]", "b]", "c,d", "g h"};
    if (!kIsWindows) folders.push_back("e:f");  // no name there
    for (const char* folder : folders) {
        folders_.resourcesFolder = temporary_.path() / folder;
        fs::create_directory(folders_.resourcesFolder);
        EXPECT_EQ(prepare({{1, 1, 1, 1}}, "ao").textureFileName, "255255255255.png");
        EXPECT_THAT(placedNames(), ElementsAre("255255255255.png")) << folder;
    }
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(TexturesTest, OfABitmapAreCopiesUnderTheirOwnName) {
    writeFile(sources_ / "wood-1.PNG", "wood");
    EXPECT_EQ(prepare(slotOf("wood-1.PNG")), slotOf("wood-1.PNG"));
    EXPECT_EQ(placedFile("wood-1.PNG"), "wood");
    EXPECT_EQ(report_.written(), (std::vector<WrittenFile>{{target("wood-1.PNG"), 4}}));
    EXPECT_THAT(pauses_, IsEmpty());
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(TexturesTest, OfABitmapWithASpaceAreCopiesUnderASanitisedName) {
    writeFile(sources_ / "my tex.PNG", "tex");
    ChannelSlot expected = slotOf("my tex.PNG");
    expected.textureFileName = "my_tex.PNG";
    expected.sourcePath = utf8Path(target("my_tex.PNG"));
    EXPECT_EQ(prepare(slotOf("my tex.PNG")), expected);
    EXPECT_EQ(placedFile("my_tex.PNG"), "tex");
    EXPECT_THAT(placedNames(), ElementsAre("my_tex.PNG"));
}

TEST_F(TexturesTest, KeepTheirNamesWithoutAFile) {
    EXPECT_EQ(prepare(slotOf("lost tex.png"), "normal"), slotOf("lost tex.png"));
    EXPECT_THAT(placedNames(), IsEmpty());
    EXPECT_THAT(told(), ElementsAre("texture-missing | M | normal: " + utf8Path(sources_ / "lost tex.png")));
    prepare(slotOf("lost tex.png"), "normal");
    EXPECT_EQ(report_.entries().size(), 1U) << "one line a fact";
}

TEST_F(TexturesTest, KeepTheirNamesWhereTheFileCannotBeCopied) {
    fs::create_directory(sources_ / "folder.png");
    EXPECT_EQ(prepare(slotOf("folder.png")), slotOf("folder.png"));
    EXPECT_EQ(told().back(),
              "texture-unreadable | M | diffuse: " + utf8Path(sources_ / "folder.png") + ": it is a folder");
    EXPECT_THAT(placedNames(), IsEmpty());
}

TEST_F(TexturesTest, TellOfPathsThatLoseCharacters) {
    for (const auto& [name, host] : {std::pair<const char*, const char16_t*>{"\x16.png", u"/a/\u0416.png"},
                                     std::pair<const char*, const char16_t*>{"\xE9.png", u"/a/\u00E9.png"}}) {
        const ChannelSlot slot{{}, "/a/" + std::string(name), name, host};
        EXPECT_EQ(prepare(slot), slot);
    }
    // Windows' code page of Western Europe has the second letter in that byte: that path loses nothing.
    const std::string second = kIsWindows ? "texture-missing" : "texture-path-mangled";
    EXPECT_THAT(told(), ElementsAre("texture-path-mangled | M | diffuse: /a/Ж.png",
                                    second + " | M | diffuse: /a/é.png"));
}

TEST_F(TexturesTest, OfAPathWithoutAFileNameAreColours) {
    ChannelSlot slot{{1, 1, 1, 1}, "/a/", "", u"/a/"};
    EXPECT_EQ(prepare(slot).textureFileName, "255255255255.png");
    EXPECT_EQ(prepare(slot).sourcePath, "/a/");
    EXPECT_THAT(told(), ElementsAre("texture-missing | M | diffuse: /a/"));
}

TEST_F(TexturesTest, OfTwoFilesOfOneNameAreToldAndTheLaterStays) {
    fs::create_directory(sources_ / "b");
    writeFile(sources_ / "a b.png", "first");
    writeFile(sources_ / "b" / "a_b.png", "other");
    const std::string other = asPathText("b/a_b.png");
    for (const std::string& name : {std::string("a b.png"), other, std::string("a b.png"), other})
        EXPECT_EQ(prepare(slotOf(name)).textureFileName, "a_b.png");
    EXPECT_EQ(placedFile("a_b.png"), "other");
    EXPECT_THAT(told(), ElementsAre("texture-names-equal | a_b.png | " + utf8Path(sources_ / "a b.png") +
                                    " and " + utf8Path(sources_ / "b" / "a_b.png")));
}

TEST_F(TexturesTest, OfTwoEqualFilesOfOneNameAreNotTold) {
    fs::create_directory(sources_ / "b");
    writeFile(sources_ / "a.png", "same");
    writeFile(sources_ / "b" / "a.png", "same");
    for (const char* name : {"a.png", "b/a.png", "a.png"})
        EXPECT_EQ(prepare(slotOf(name)), slotOf(name));
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_EQ(report_.written().size(), 1U);
}

TEST_F(TexturesTest, OfOneFileAreCopiedOnce) {
    writeFile(sources_ / "a.png", "text");
    prepare(slotOf("a.png"));
    writeFile(target("a.png"), "touched since");
    prepare(slotOf("a.png"), "normal");
    EXPECT_EQ(placedFile("a.png"), "touched since");
}

TEST_F(TexturesTest, ThatLieInThePackageAlreadyStay) {
    writeFile(target("a.png"), "text");
    ChannelSlot slot{{}, utf8Path(target("a.png")), "a.png", target("a.png").u16string()};
    EXPECT_EQ(prepare(slot), slot);
    EXPECT_EQ(placedFile("a.png"), "text");
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(TexturesTest, ThatMeetAGeneratedColourAreTold) {
    writeFile(sources_ / "255255255255.png", "no white");
    prepare({{1, 1, 1, 1}}, "ao");
    prepare(slotOf("255255255255.png"));
    EXPECT_EQ(placedFile("255255255255.png"), "no white");
    prepare({{1, 1, 1, 1}}, "light");
    EXPECT_EQ(placedFile("255255255255.png"), "no white");
    const std::string source = utf8Path(sources_ / "255255255255.png");
    EXPECT_THAT(told(), ElementsAre("texture-names-equal | 255255255255.png | " + source +
                                    " and a generated colour"));
}

TEST_F(TexturesTest, OfAnotherReflectionMapAreItsCopy) {
    writeFile(sources_ / "sky 1.dds", ddsHeader("DXT1", 0xFE));
    settings_.customReflectionMap = sources_ / "sky 1.dds";
    const ChannelSlot slot{{}, "", "sky 1.dds"};
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(prepare(slot, "reflection"), slot) << "its name is not sanitised";
    EXPECT_EQ(placedFile("sky 1.dds"), ddsHeader("DXT1", 0xFE));
    EXPECT_THAT(told(), ElementsAre("cube-map-name-breaks-script | reflection map | sky 1.dds"));
}

TEST_F(TexturesTest, OfAMissingReflectionMapAreNone) {
    settings_.customReflectionMap = "/nowhere/sky.dds";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(prepare({{}, "", "sky.dds"}, "reflection").textureFileName, "sky.dds");
    EXPECT_THAT(placedNames(), IsEmpty());
    EXPECT_THAT(told(), ElementsAre("cube-map-missing | reflection map | /nowhere/sky.dds"));
}

TEST_F(TexturesTest, EndTheExportWhereTheirCopyCannotBeWritten) {
    writeFile(sources_ / "a.png", "text");
    fs::create_directory(target("a.png"));
    EXPECT_THROW(prepare(slotOf("a.png")), fs::filesystem_error);
}

}  // namespace
}  // namespace velinor
