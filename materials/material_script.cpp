// A script:
//
//     material NAME
//     {
//         technique glsl
//         {
//             pass qen_pbs
//             {
//                 blending and culling, commented out for an opaque material
//
//                 vertex_program_ref physicallybased_vp { parameters }
//
//                 fragment_program_ref physicallybased_fp { parameters }
//
//                 texture_unit UNIT { alias, texture, filter }     seven of them, an empty line after each
//
//             }
//         }
//     }
#include "materials/material_script.h"

#include "base/number_format.h"
#include "base/text.h"
#include "materials/alpha_test.h"
#include "materials/property_listing.h"
#include "materials/script_file.h"
#include "materials/texture_placement.h"
#include "materials/textures.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

constexpr std::size_t kUsualSize = 4096;

constexpr std::string_view kTransparentStates =
    "\t\t\tscene_blend alpha_blend\n"
    "\t\t\t// depth_write off\n"
    "\t\t\t// alpha_rejection greater_equal 128\n"
    "\t\t\tcull_hardware none\n"
    "\t\t\tcull_software none\n\n";
constexpr std::string_view kOpaqueStates =
    "\t\t\t// scene_blend alpha_blend\n"
    "\t\t\t// depth_write off\n"
    "\t\t\t// alpha_rejection greater_equal 128\n"
    "\t\t\t// cull_hardware none\n"
    "\t\t\t// cull_software none\n\n";

constexpr std::string_view kPrograms =
    "\t\t\tvertex_program_ref physicallybased_vp\n"
    "\t\t\t{\n"
    "\t\t\t\tparam_named texture_offset float2 1.000000 1.000000\n"
    "\t\t\t\tparam_named tile_count float 1\n"
    "\t\t\t\tparam_named tile_count_metallic float 1\n"
    "\t\t\t\tparam_named tile_count_normal float 1\n"
    "\t\t\t\tparam_named tile_count_roughness float 1\n"
    "\t\t\t}\n\n"
    "\t\t\tfragment_program_ref physicallybased_fp\n"
    "\t\t\t{\n"
    "\t\t\t\tparam_named refl_blur_bias float 0.300000\n"
    "\t\t\t\tparam_named reflection_power float 0.500000\n"
    "\t\t\t\tparam_named roughness_bias float 0.000000\n"
    "\t\t\t\tparam_named spec_multiplier float 0.500000\n"
    "\t\t\t\tparam_named surface_reflectivity float2 1.000000 1.000000\n"
    "\t\t\t}\n\n";

struct TextureUnit {
    std::string_view name;  // also its alias
    std::string_view MaterialTextures::*texture;
    bool isCubeMap = false;
};
constexpr TextureUnit kUnits[] = {
    {"diffuse_map", &MaterialTextures::diffuse},
    {"normal_map", &MaterialTextures::normal},
    {"roughness_map", &MaterialTextures::roughness},
    {"metallic_map", &MaterialTextures::metallic},
    {"reflection_map", &MaterialTextures::reflection, true},
    {"light_map", &MaterialTextures::light},
    {"ambientocclusion_map", &MaterialTextures::ambientOcclusion},
};

void appendUnit(std::string& text, const TextureUnit& unit, std::string_view texture) {
    text.append("\t\t\ttexture_unit ").append(unit.name).append("\n\t\t\t{\n");
    text.append("\t\t\t\ttexture_alias ").append(unit.name).append("\n");
    if (unit.isCubeMap) {
        text.append("\t\t\t\tcubic_texture ").append(texture).append(" combinedUVW\n");
        text.append("\t\t\t\tmax_anisotropy 8\n\t\t\t\tenv_map cubic_reflection\n");
    } else {
        text.append("\t\t\t\ttexture ").append(texture).append("\n\t\t\t\tmax_anisotropy 8\n");
    }
    text.append("\t\t\t}\n\n");
}

AlphaAnswer alphaOf(const std::string& path, PlacedFiles& placed) {
    const auto known = placed.alphaOf(path);
    if (known) return *known;
    AlphaAnswer alpha = testAlpha(pathOfNarrow(path));
    placed.noteAlpha(path, alpha);
    return alpha;
}

MaterialTextures texturesOf(const ChannelTable& channels) {
    const auto nameOf = [&channels](std::string_view key) -> std::string_view {
        return channels.find(key)->second.textureFileName;
    };
    return {.diffuse = nameOf("diffuse"),
            .normal = nameOf("normal"),
            .roughness = nameOf("roughness"),
            .metallic = nameOf("metallic"),
            .reflection = nameOf("reflection"),
            .light = nameOf("light"),
            .ambientOcclusion = nameOf("ao")};
}

// Why a material with that diffuse channel, its texture prepared, is transparent, for people; empty where it
// is opaque. A bitmap decides by its pixels, a colour by its alpha.
std::string transparencyReason(const MaterialWriterContext& context, std::string_view materialName,
                               const ChannelSlot& diffuse) {
    if (!diffuse.sourcePath.empty()) {
        const AlphaAnswer alpha = alphaOf(diffuse.sourcePath, context.placed);
        const std::string name = shownBytes(diffuse.textureFileName);
        if (!alpha.fault.empty())
            reportOnce(context, MessageId::textureAlphaDoubtful, materialName, name + ": " + alpha.fault);
        return alpha.isLow ? "low alpha values in " + name : std::string();
    }
    if (diffuse.color.alpha == 1.0F) return {};
    std::string reason = "the diffuse alpha is ";
    appendFixed6(reason, diffuse.color.alpha);
    return reason;
}

void writeScript(const MaterialWriterContext& context, const host::IGameMaterial* material,
                 std::string_view materialName, const MaterialVariant& variant,
                 const ChannelTable& channels) {
    const std::string reason = transparencyReason(context, materialName, channels.find("diffuse")->second);
    if (!reason.empty()) reportOnce(context, MessageId::materialTransparent, materialName, reason);
    const std::string name = sanitiseName(variant.scriptName);
    const auto replaced = context.placed.claimScript(name, material, materialName);
    if (replaced) {
        context.report.add(MessageId::materialNamesEqual, materialName,
                           name + ".material: replaces that of \"" + *replaced + '"');
    }
    writeResourceText(context, name + ".material",
                      materialScriptText(name, !reason.empty(), texturesOf(channels)));
}

}  // namespace

std::string materialScriptText(std::string_view name, bool isTransparent, const MaterialTextures& textures) {
    std::string text;
    text.reserve(kUsualSize);
    text.append("material ").append(name).append("\n{\n\ttechnique glsl\n\t{\n\t\tpass qen_pbs\n\t\t{\n");
    text.append(isTransparent ? kTransparentStates : kOpaqueStates).append(kPrograms);
    for (const TextureUnit& unit : kUnits)
        appendUnit(text, unit, textures.*unit.texture);
    text.append("\t\t}\n\t}\n}\n");
    return text;
}

bool writeMaterialScript(const MaterialWriterContext& context, host::IGameMaterial* material,
                         const MaterialVariant& variant) {
    const std::string materialName = shownMaterialName(material);
    auto channels = collectChannels(context, material, variant);
    if (channels) {
        prepareTextures(context, materialName, *channels);
        writeScript(context, material, materialName, variant, *channels);
    } else {
        reportOnce(context, MessageId::materialClassNotExported, materialName,
                   toUtf8(material->GetMaterialClass()));
        writePropertyListing(context, *material, variant.scriptName);
    }
    context.progress.advance(1);
    return channels.has_value();
}

}  // namespace velinor
