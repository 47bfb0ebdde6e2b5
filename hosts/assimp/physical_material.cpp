#include "hosts/assimp/physical_material.h"

#include <algorithm>

#include "hosts/assimp/assimp_text.h"
#include "hosts/assimp/standard_material.h"

namespace velinor {
namespace {

constexpr std::string_view kPhysicalValues[] = {"$mat.metallicFactor", "$mat.roughnessFactor",
                                                "$mat.glossinessFactor"};

using MapOrNone = std::optional<SnapshotRef>;

MapOrNone bitmapOf(const MaterialSource& source, std::initializer_list<aiTextureType> types) {
    for (const aiTextureType type : types) {
        if (const auto file = source.values.texture(type)) return source.bitmaps.bitmap(*file, source.name);
    }
    return std::nullopt;
}

MapOrNone bumpOf(const MaterialSource& source) {
    for (const aiTextureType type : {aiTextureType_NORMALS, aiTextureType_NORMAL_CAMERA}) {
        if (const auto file = source.values.texture(type))
            return source.bitmaps.normalBump(*file, source.name);
    }
    return bitmapOf(source, {aiTextureType_HEIGHT});
}

bool isOpaqueGltf(const MaterialSource& source) {
    return source.values.text("$mat.gltf.alphaMode").value_or("OPAQUE") == "OPAQUE";
}

void noteEmission(const MaterialSource& source, const PhysicalParameters& parameters) {
    if (!parameters.emissionMap && source.values.isNotBlack("$clr.emissive"))
        source.losses.add(MaterialLoss::emissionColour, source.name);
}

// Of one file, metalness in blue and roughness in green. Red may be occlusion, for which there is no slot.
void readPackedMaps(const MaterialSource& source, PhysicalParameters& parameters) {
    const auto roughness = source.values.texture(aiTextureType_DIFFUSE_ROUGHNESS);
    const auto metalness = source.values.texture(aiTextureType_METALNESS);
    if (roughness) {
        parameters.roughnessMap = source.bitmaps.part(*roughness, ImagePart::green, "roughness", source.name);
    }
    if (metalness) {
        parameters.metalnessMap = source.bitmaps.part(*metalness, ImagePart::blue, "metalness", source.name);
    }
}

// Without an alpha channel the glossiness is that of the number alone.
void readGlossiness(const MaterialSource& source, float glossiness, PhysicalParameters& parameters) {
    parameters.roughness = 1 - glossiness;
    parameters.metalness = 0;
    source.losses.add(MaterialLoss::specularColour, source.name);
    if (const auto packed = source.values.texture(aiTextureType_SPECULAR)) {
        parameters.roughnessMap =
            source.bitmaps.part(*packed, ImagePart::invertedAlpha, "roughness", source.name);
    }
}

PhysicalParameters gltfPhysical(const MaterialSource& source) {
    const MaterialValues& values = source.values;
    const auto glossiness = values.number("$mat.glossinessFactor");
    const char* const colourKey = glossiness ? "$clr.diffuse" : "$clr.base";
    PhysicalParameters parameters;
    parameters.baseColor =
        values.colour(colourKey).value_or(values.colour("$clr.diffuse").value_or(parameters.baseColor));
    parameters.baseColorMap = glossiness
                                  ? bitmapOf(source, {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR})
                                  : bitmapOf(source, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE});
    if (!isOpaqueGltf(source)) parameters.transparency = 1 - parameters.baseColor[3];
    if (glossiness) {
        readGlossiness(source, *glossiness, parameters);
    } else {
        parameters.roughness = values.number("$mat.roughnessFactor").value_or(1);
        parameters.metalness = values.number("$mat.metallicFactor").value_or(1);
        readPackedMaps(source, parameters);
    }
    if (values.texture(aiTextureType_LIGHTMAP)) source.losses.add(MaterialLoss::occlusionMap, source.name);
    return parameters;
}

// With a colour, an opacity and perhaps an exponent of its own, as OBJ has beside Pr and Pm.
PhysicalParameters mixedPhysical(const MaterialSource& source) {
    const MaterialValues& values = source.values;
    PhysicalParameters parameters;
    parameters.baseColor =
        values.colour("$clr.base").value_or(values.colour("$clr.diffuse").value_or(parameters.baseColor));
    parameters.baseColorMap = bitmapOf(source, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE});
    parameters.transparency = 1 - opacityOf(source);
    parameters.roughness = values.number("$mat.roughnessFactor").value_or(1 - glossinessOf(source));
    parameters.metalness = values.number("$mat.metallicFactor").value_or(0);
    parameters.roughnessMap = bitmapOf(source, {aiTextureType_DIFFUSE_ROUGHNESS});
    parameters.metalnessMap = bitmapOf(source, {aiTextureType_METALNESS});
    if (values.texture(aiTextureType_OPACITY)) source.losses.add(MaterialLoss::opacityMap, source.name);
    if (values.texture(aiTextureType_AMBIENT_OCCLUSION))
        source.losses.add(MaterialLoss::occlusionMap, source.name);
    return parameters;
}

SnapshotMapProperty mapProperty(const MapOrNone& map) {
    return {map};
}

}  // namespace

std::vector<SnapshotProperty> physicalProperties(const PhysicalParameters& parameters) {
    const auto& [r, g, b, a] = parameters.baseColor;
    return {
        {u"base_color_map", mapProperty(parameters.baseColorMap)},
        {u"base_color", host::Point4{r, g, b, a}},
        {u"transparency", parameters.transparency},
        {u"bump_map", mapProperty(parameters.bumpMap)},
        {u"roughness_map", mapProperty(parameters.roughnessMap)},
        {u"roughness", parameters.roughness},
        {u"metalness_map", mapProperty(parameters.metalnessMap)},
        {u"metalness", parameters.metalness},
        {u"emission_map", mapProperty(parameters.emissionMap)},
    };
}

bool isPhysical(const MaterialValues& values) {
    return std::ranges::any_of(kPhysicalValues, [&](std::string_view key) { return values.has(key); });
}

PhysicalParameters physicalOf(const MaterialSource& source) {
    PhysicalParameters parameters =
        source.file.format == FileFormat::gltf ? gltfPhysical(source) : mixedPhysical(source);
    parameters.bumpMap = bumpOf(source);
    parameters.emissionMap = bitmapOf(source, {aiTextureType_EMISSIVE, aiTextureType_EMISSION_COLOR});
    noteEmission(source, parameters);
    return parameters;
}

}  // namespace velinor
