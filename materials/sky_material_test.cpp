#include "materials/sky_material.h"

#include "base/text.h"
#include "materials/material_script.h"
#include "materials/materials_test_support.h"

namespace velinor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SkyMaterialTest : public MaterialsTest {
  protected:
    std::string script() const { return placedFile("FXUnlitSkyboxCubic.material"); }
};

TEST_F(SkyMaterialTest, NamesTheShippedCubeMapByDefault) {
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_EQ(script(), asTextFile("material FXUnlitSkyboxCubic\n"
                                   "{\n"
                                   "\ttechnique\n"
                                   "\t{\n"
                                   "\t\tpass\n"
                                   "\t\t{\n"
                                   "\t\t\tdepth_check on\n"
                                   "\t\t\tdepth_write off\n"
                                   "\n"
                                   "\t\t\ttexture_unit\n"
                                   "\t\t\t{\n"
                                   "\t\t\t\tcubic_texture default.dds combinedUVW\n"
                                   "\t\t\t\ttex_address_mode clamp\n"
                                   "\t\t\t}\n"
                                   "\t\t}\n"
                                   "\t}\n"
                                   "}\n"
                                   "\n"));
    EXPECT_EQ(placedFile("default.dds"), "shipped");
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_EQ(report_.written(),
              (std::vector<WrittenFile>{{target("default.dds"), 7},
                                        {target("FXUnlitSkyboxCubic.material"), script().size()}}));
}

TEST_F(SkyMaterialTest, CopiesAChosenCubeMap) {
    writeFile(sources_ / "Sky.dds", ddsHeader("DXT1", 0xFE));
    settings_.customEnvironmentMap = sources_ / "Sky.dds";
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(script(), HasSubstr(asTextFile("\t\t\t\tcubic_texture Sky.dds combinedUVW\n")));
    EXPECT_EQ(placedFile("Sky.dds"), ddsHeader("DXT1", 0xFE));
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(SkyMaterialTest, TakesTheShippedCubeMapForEveryFileOfItsName) {
    writeFile(sources_ / "default.dds", "chosen");
    settings_.customEnvironmentMap = sources_ / "default.dds";
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_EQ(placedFile("default.dds"), "shipped");
}

TEST_F(SkyMaterialTest, ComparesTheShippedNameWithItsCase) {
    writeFile(sources_ / "Default.dds", ddsHeader("DXT1", 0xFE));
    settings_.customEnvironmentMap = sources_ / "Default.dds";
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_EQ(placedFile("Default.dds"), ddsHeader("DXT1", 0xFE));
    EXPECT_THAT(placedNames(), ElementsAre("Default.dds", "FXUnlitSkyboxCubic.material"));
}

TEST_F(SkyMaterialTest, NamesAMissingCubeMapAndReportsIt) {
    settings_.customEnvironmentMap = "D:\\maps\\Sky.dds";
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(script(), HasSubstr(asTextFile("\t\t\t\tcubic_texture Sky.dds combinedUVW\n")));
    EXPECT_THAT(placedNames(), ElementsAre("FXUnlitSkyboxCubic.material"));
    EXPECT_THAT(told(), ElementsAre("cube-map-missing | environment map | D:\\maps\\Sky.dds"));
}

TEST_F(SkyMaterialTest, ReportsThatNoCubeMapIsChosen) {
    settings_.customEnvironmentMap.clear();
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(script(), HasSubstr(asTextFile("\t\t\t\tcubic_texture  combinedUVW\n")));
    EXPECT_THAT(told(), ElementsAre("cube-map-missing | environment map | no file is chosen"));
}

TEST_F(SkyMaterialTest, ReportsAMissingShippedCubeMap) {
    const auto shipped = folders_.pluginFolder / "tolvex" / "res" / "default.dds";
    std::filesystem::remove(shipped);
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(told(), ElementsAre("cube-map-missing | environment map | " + utf8Path(shipped)));
}

TEST_F(SkyMaterialTest, ReportsAFolderInPlaceOfACubeMap) {
    settings_.customEnvironmentMap = sources_;
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(told(), ElementsAre("texture-unreadable | environment map | " + utf8Path(sources_) +
                                    ": it is a folder"));
}

TEST_F(SkyMaterialTest, WarnsOfNamesThatBreakScripts) {
    std::vector<const char*> breaking{"my sky.dds", "{sky.dds", "sky}.dds", "$ky.dds"};
    // Windows has no such names.
    if (!kIsWindows) breaking.insert(breaking.end(), {"s:y.dds", "\"sky\".dds", "s\ty.dds"});
    for (const char* name : breaking) {
        writeFile(sources_ / name, ddsHeader("DXT1", 0xFE));
        settings_.customEnvironmentMap = sources_ / name;
        EXPECT_TRUE(writeSkyMaterial(context()));
        EXPECT_THAT(told(), Contains("cube-map-name-breaks-script | environment map | " + std::string(name)));
        EXPECT_THAT(script(), HasSubstr("cubic_texture " + std::string(name) + " combinedUVW"));
    }
    EXPECT_EQ(report_.entries().size(), breaking.size());
    for (const char* name :
         {"sky.dds", "s$y.dds", kIsWindows ? "(sky)#,'.dds" : "(sky)#,'*.dds", "\xC3\xA9.dds"}) {
        writeFile(sources_ / name, ddsHeader("DXT1", 0xFE));
        settings_.customEnvironmentMap = sources_ / name;
        EXPECT_TRUE(writeSkyMaterial(context()));
    }
    EXPECT_EQ(report_.entries().size(), breaking.size());
}

TEST_F(SkyMaterialTest, WarnsOfFilesThatAreNoCubeMaps) {
    std::string extended = ddsHeader("DX10", 0) + std::string(20, '\0');
    std::string extendedCube = extended;
    extendedCube[136] = '\4';
    struct Case {
        const char* name;
        std::string bytes;
        bool isCube;
    };
    for (const auto& [name, bytes, isCube] :
         {Case{"cube.dds", ddsHeader("DXT1", 0x02), true}, Case{"flat.dds", ddsHeader("DXT1", 0), false},
          Case{"extended.dds", extendedCube, true}, Case{"flat10.dds", extended, false},
          Case{"cut10.dds", ddsHeader("DX10", 0), false}, Case{"cut.dds", "DDS |", false},
          Case{"empty.dds", "", false}, Case{"image.png", std::string(500, '\xFF'), false}}) {
        writeFile(sources_ / name, bytes);
        settings_.customEnvironmentMap = sources_ / name;
        const std::size_t before = report_.entries().size();
        EXPECT_TRUE(writeSkyMaterial(context()));
        EXPECT_EQ(report_.entries().size() == before, isCube) << name;
        if (!isCube) {
            EXPECT_EQ(told().back(), "cube-map-not-cube | environment map | " + utf8Path(sources_ / name));
        }
    }
}

TEST_F(SkyMaterialTest, TellsThatItReplacesAMaterialOfItsName) {
    addStandard(u"FXUnlitSkyboxCubic");
    makeHost();
    EXPECT_TRUE(writeMaterialScript(context(), material(0), variant(material(0))));
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(told(), ElementsAre("material-names-equal | the sky | FXUnlitSkyboxCubic.material: "
                                    "replaces that of \"FXUnlitSkyboxCubic\""));
    EXPECT_THAT(script(), HasSubstr("tex_address_mode clamp"));
}

TEST_F(SkyMaterialTest, TellsOfTwoCubeMapsOfOneName) {
    std::filesystem::create_directory(sources_ / "b");
    writeFile(sources_ / "sky.dds", ddsHeader("DXT1", 0xFE));
    writeFile(sources_ / "b" / "sky.dds", ddsHeader("DXT5", 0xFE));
    settings_.customReflectionMap = sources_ / "sky.dds";
    settings_.customEnvironmentMap = sources_ / "b" / "sky.dds";
    EXPECT_TRUE(writeMaterialScript(context(), nullptr, variant(nullptr)));
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(told(),
                ElementsAre("texture-names-equal | sky.dds | " + utf8Path(sources_ / "b" / "sky.dds") +
                            " and " + utf8Path(sources_ / "sky.dds")));
    EXPECT_EQ(placedFile("sky.dds"), ddsHeader("DXT5", 0xFE));
}

TEST_F(SkyMaterialTest, IsReportedWhereItCannotBeWritten) {
    std::filesystem::create_directory(target("FXUnlitSkyboxCubic.material"));
    EXPECT_TRUE(writeSkyMaterial(context()));
    EXPECT_THAT(told(), ElementsAre("file-not-written | " + utf8Path(target("FXUnlitSkyboxCubic.material")) +
                                    " | " + kNoFileText));
}

TEST_F(SkyMaterialTest, AnswersForCubeMapsWithNamesOfOneMegabyte) {
    settings_.customEnvironmentMap = std::string(1 << 20, 'x');
    EXPECT_TRUE(writeSkyMaterial(context()));
    ASSERT_EQ(report_.entries().size(), 1U);
    EXPECT_EQ(report_.entries()[0].id, MessageId::cubeMapMissing);
}

}  // namespace
}  // namespace velinor
