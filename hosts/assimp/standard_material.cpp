#include "hosts/assimp/standard_material.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velinor {
namespace {

// A map slot of the host, and where its texture stands, the first that is there counting.
struct Slot {
    std::int32_t number = 0;
    std::vector<std::string_view> fbxProperties;  // the properties of FBX materials
    std::vector<aiTextureType> types;             // elsewhere
};

// Of the library's own kinds those for an FBX file's specular colour and factor collide, so its properties
// are asked first.
const std::vector<Slot>& slots() {
    static const std::vector<Slot> table{
        {0, {"AmbientColor"}, {aiTextureType_AMBIENT}},
        {1, {"DiffuseColor"}, {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR}},
        {2, {"SpecularColor"}, {aiTextureType_SPECULAR}},
        {3, {"ShininessExponent"}, {aiTextureType_SHININESS}},
        {4, {"SpecularFactor"}, {}},
        {5, {"EmissiveColor", "EmissiveFactor"}, {aiTextureType_EMISSIVE, aiTextureType_EMISSION_COLOR}},
        {6, {"TransparentColor", "TransparencyFactor"}, {aiTextureType_OPACITY}},
        {8,
         {"NormalMap", "Bump"},
         {aiTextureType_NORMALS, aiTextureType_NORMAL_CAMERA, aiTextureType_HEIGHT}},
        {9, {"ReflectionColor"}, {aiTextureType_REFLECTION}},
        {11, {"DisplacementColor"}, {aiTextureType_DISPLACEMENT}},
    };
    return table;
}

struct Texture {
    std::string file;
    bool isNormal = false;  // directions of the surface, not heights
};

std::optional<Texture> fbxTexture(const MaterialSource& source, const Slot& slot) {
    for (const std::string_view property : slot.fbxProperties) {
        if (auto file = source.values.text("$raw." + std::string(property) + "|file"))
            return Texture{*std::move(file), property == "NormalMap"};
    }
    return std::nullopt;
}

std::optional<Texture> textureOf(const MaterialSource& source, const Slot& slot) {
    if (source.file.format == FileFormat::fbx) {
        if (auto texture = fbxTexture(source, slot)) return texture;
        // Where this kind of texture is that of another slot of the same material.
        if (slot.number == 2 && fbxTexture(source, slots()[4])) return std::nullopt;
    }
    for (const aiTextureType type : slot.types) {
        if (auto file = source.values.texture(type)) {
            return Texture{*std::move(file),
                           type == aiTextureType_NORMALS || type == aiTextureType_NORMAL_CAMERA};
        }
    }
    return std::nullopt;
}

void fillMaps(const MaterialSource& source, SnapshotMaterial& material) {
    for (const Slot& slot : slots()) {
        const auto texture = textureOf(source, slot);
        if (!texture) continue;
        const SnapshotRef map = texture->isNormal ? source.bitmaps.normalBump(texture->file, source.name)
                                                  : source.bitmaps.bitmap(texture->file, source.name);
        material.textureMaps.push_back({slot.number, map});
    }
}

host::Point3 pointOf(const Colour& colour) {
    return {colour[0], colour[1], colour[2]};
}

bool hasMap(const SnapshotMaterial& material, std::int32_t slot) {
    return std::ranges::any_of(material.textureMaps,
                               [slot](const SnapshotTextureMap& map) { return map.slot == slot; });
}

// The exponent of a highlight by the host's rule: 2 to the power of ten times the glossiness.
float ofExponent(float exponent) {
    return exponent > 0 ? std::log2(exponent) / 10 : 0;
}

// Some writers give the host's number as it is, one its percentage, the others the exponent, which is never
// below 1.
float ofColladaShininess(float shininess, const SourceFile& file) {
    if (shininess < 1) return shininess;
    const bool isPercentage = file.generator.find("ColladaMax") != std::string::npos;
    return isPercentage ? shininess / 100 : ofExponent(shininess);
}

float glossinessBy(float shininess, const SourceFile& file) {
    switch (file.format) {
        case FileFormat::threeDs:
            return shininess / 100;
        case FileFormat::collada:
            return ofColladaShininess(shininess, file);
        default:
            return ofExponent(shininess);
    }
}

}  // namespace

float opacityOf(const MaterialSource& source) {
    const float opacity = source.values.number("$mat.opacity").value_or(1);
    const bool isMadeOpaque =
        source.file.format == FileFormat::collada || source.file.format == FileFormat::gltf;
    return opacity == 0 && isMadeOpaque ? 1 : opacity;
}

float glossinessOf(const MaterialSource& source) {
    const auto shininess = source.values.number("$mat.shininess");
    return shininess ? std::clamp(glossinessBy(*shininess, source.file), 0.F, 1.F) : 0;
}

void fillStandard(const MaterialSource& source, SnapshotMaterial& material) {
    constexpr float kHostGrey = 150.F / 255.F;
    fillMaps(source, material);
    // A map that stands for the whole colour is shown as it is; without one the host's own grey serves.
    const float missing = hasMap(material, 1) ? 1.F : kHostGrey;
    material.diffuse =
        pointOf(source.values.colour("$clr.diffuse").value_or(Colour{missing, missing, missing, 1}));
    material.opacity = opacityOf(source);
    material.glossiness = glossinessOf(source);
    if (source.values.isNotBlack("$clr.emissive") && !hasMap(material, 5))
        source.losses.add(MaterialLoss::emissionColour, source.name);
    if (const auto specular = source.values.colour("$clr.specular")) material.specular = pointOf(*specular);
}

}  // namespace velinor
