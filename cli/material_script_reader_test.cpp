#include "cli/material_script_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string inUnit(const std::string& line) {
    return "material M\n{\n\ttechnique\n\t{\n\t\t" + line + "\n\t}\n}\n";
}

TEST(MaterialScriptReader, FindsMaterialsAndTextures) {
    const MaterialScript script = readMaterialScript(
        "material Brick\r\n"
        "{\n"
        "\ttechnique glsl\n"
        "\t{\n"
        "\t\t// texture commented.png\n"
        "\t\ttexture_unit diffuse_map\n"
        "\t\t{\n"
        "\t\t\ttexture_alias diffuse_map\n"
        "\t\t\ttexture wall.png\n"
        "\t\t}\n"
        "\t\ttexture_unit\n"
        "\t\t{\n"
        "\t\t\tcubic_texture default.dds combinedUVW\n"
        "\t\t}\n"
        "\t}\n"
        "}\n"
        "material \"Two Words\"\n{\n}\n");
    EXPECT_THAT(script.materials, ElementsAre(ScriptName{"Brick", 1}, ScriptName{"Two Words", 17}));
    EXPECT_THAT(script.textures, ElementsAre(ScriptName{"wall.png", 9}, ScriptName{"default.dds", 13}));
    EXPECT_THAT(script.faults, IsEmpty());
}

TEST(MaterialScriptReader, TakesOddTextureNamesThatOgreTakes) {
    for (const char* name : {"a(1).png", "it's#1,b.png", "a$b.png", "W\xC3\xA4nde.png", "-.png"}) {
        const MaterialScript script = readMaterialScript(inUnit("texture " + std::string(name)));
        EXPECT_THAT(script.textures, ElementsAre(ScriptName{name, 5}));
        EXPECT_THAT(script.faults, IsEmpty()) << name;
    }
    EXPECT_THAT(readMaterialScript(inUnit("cubic_texture \"my sky.dds\" combinedUVW")).textures,
                ElementsAre(ScriptName{"my sky.dds", 5}));
}

TEST(MaterialScriptReader, RefusesTextureNamesThatOgreReadsOtherwise) {
    struct Case {
        const char* line;
        const char* flaw;
    };
    for (const auto& [line, flaw] :
         {Case{"texture my wall.png", "\"my wall.png\" holds a blank"},
          Case{"cubic_texture my sky.dds combinedUVW", "\"my sky.dds\" holds a blank"},
          Case{"texture a{b.png", "\"a{b.png\" holds a brace"},
          Case{"texture c:a.png", "\"c:a.png\" holds a colon"},
          Case{"texture $a.png", "\"$a.png\" starts with \"$\""}}) {
        const MaterialScript script = readMaterialScript(inUnit(line));
        EXPECT_THAT(script.textures, IsEmpty());
        EXPECT_THAT(script.faults, ElementsAre(ScriptName{
                                       std::string("the texture name ") + flaw +
                                           ", which OGRE does not read as part of a name; rename the file",
                                       5}));
    }
}

TEST(MaterialScriptReader, FindsWhatBreaksTheForm) {
    struct Case {
        std::string text;
        ScriptName fault;
    };
    for (const auto& [text, fault] :
         {Case{"material\n{\n}\n", {"a material has no name", 1}},
          Case{"material M\n{\n", {"a brace is not closed", 2}},
          Case{"material M\n{\n}\n}\n", {"a brace closes nothing", 4}},
          Case{inUnit("texture"), {"a texture unit names no texture", 5}},
          Case{inUnit("cubic_texture  combinedUVW"), {"a texture unit names no texture", 5}},
          Case{inUnit("cubic_texture a.dds"), {"cubic_texture does not end in \"combinedUVW\"", 5}}}) {
        EXPECT_THAT(readMaterialScript(text).faults, ElementsAre(fault)) << text;
    }
}

}  // namespace
}  // namespace velinor
