#include "materials/sky_material.h"

#include "materials/cube_map.h"
#include "materials/script_file.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

// Tells where a material of the scene bears the sky's name and loses its script to it.
void claimName(const MaterialWriterContext& context) {
    constexpr const host::IGameMaterial* kNoMaterial = nullptr;
    const auto replaced = context.placed.claimScript(kSkyMaterialName, kNoMaterial, "the sky");
    if (replaced) {
        context.report.add(
            MessageId::materialNamesEqual, "the sky",
            std::string(kSkyMaterialName) + ".material: replaces that of \"" + *replaced + '"');
    }
}

}  // namespace

std::string skyScriptText(std::string_view textureName) {
    std::string text = "material ";
    text.append(kSkyMaterialName);
    text.append(
        "\n{\n"
        "\ttechnique\n"
        "\t{\n"
        "\t\tpass\n"
        "\t\t{\n"
        "\t\t\tdepth_check on\n"
        "\t\t\tdepth_write off\n\n"
        "\t\t\ttexture_unit\n"
        "\t\t\t{\n"
        "\t\t\t\tcubic_texture ");
    text.append(textureName);
    text.append(
        " combinedUVW\n"
        "\t\t\t\ttex_address_mode clamp\n"
        "\t\t\t}\n"
        "\t\t}\n"
        "\t}\n"
        "}\n");
    return text;
}

bool writeSkyMaterial(const MaterialWriterContext& context) {
    const std::string textureName = narrowFileName(context.settings.customEnvironmentMap);
    claimName(context);
    placeCubeMap(context, "environment map", context.settings.customEnvironmentMap, textureName);
    writeResourceText(context, std::string(kSkyMaterialName) + ".material", skyScriptText(textureName));
    context.progress.advance(1);
    return true;
}

}  // namespace velinor
