#include "hosts/assimp/assimp_materials.h"

#include <assimp/scene.h>

#include <string>
#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/assimp/physical_material.h"
#include "hosts/assimp/standard_material.h"

namespace velinor {
namespace {

std::string nameOf(const aiMaterial& material) {
    return MaterialValues(material).text("?mat.name").value_or(std::string());
}

// The library names textures of its own "$texture_dummy.bmp".
bool hasTextureOfFile(const MaterialValues& values) {
    const auto texture = values.texture(aiTextureType_DIFFUSE);
    return texture && !texture->starts_with('$');
}

// Whether a material with the library's own name has nothing but the library's own grey: as its only colour,
// or as its light where the surroundings give it.
bool isUntouchedDefault(const MaterialValues& values) {
    constexpr Colour kGrey{0.6F, 0.6F, 0.6F, 1};
    constexpr Colour kDark{0.05F, 0.05F, 0.05F, 1};
    if (values.text("?mat.name") != "DefaultMaterial" || hasTextureOfFile(values)) return false;
    const Colour diffuse = values.colour("$clr.diffuse").value_or(kGrey);
    const Colour specular = values.colour("$clr.specular").value_or(diffuse);
    const bool isPlain = (specular == diffuse || specular == kGrey || !values.isNotBlack("$clr.specular")) &&
                         !values.isNotBlack("$clr.emissive");
    return isPlain && (diffuse == kGrey || values.colour("$clr.ambient") == kDark);
}

// Whether the library has made the material up for meshes without one.
bool isPlaceholder(const aiScene& scene, unsigned index, FileFormat format) {
    const aiMaterial* material = scene.mMaterials[index];
    if (material == nullptr) return true;
    const MaterialValues values(*material);
    const std::string text = nameOf(*material);
    switch (format) {
        case FileFormat::fbx:
            return text == "DefaultMaterial" && !values.hasKeyThatBegins("$raw.");
        case FileFormat::gltf:
            return text.empty() && index + 1 == scene.mNumMaterials;
        case FileFormat::obj:
            return text == "DefaultMaterial" && index == 0;
        case FileFormat::threeDs:
            return text == "%%%DEFAULT";
        case FileFormat::upright:
            return text.empty() || isUntouchedDefault(values);
        case FileFormat::collada:  // the file's own state their shading
            return isUntouchedDefault(values) && !values.has("$mat.shadingm");
        default:
            return isUntouchedDefault(values);
    }
}

std::u16string shownMaterialName(const aiMaterial& material, const SourceFile& file) {
    const std::string name = nameOf(material);
    return hostText(file.isAsciiFbx ? decodeFbxEntities(name) : name);
}

// What no material of a package has, whatever its class.
void noteLosses(const MaterialSource& source) {
    const MaterialValues& values = source.values;
    const auto isSet = [&values](const char* key) { return values.number(key).value_or(0) > 0; };
    const bool isGltf = source.file.format == FileFormat::gltf;
    const std::pair<bool, MaterialLoss> losses[] = {
        {values.hasMovedTexture(), MaterialLoss::movedTexture},
        {isGltf && values.hasTextureOfOtherSet(), MaterialLoss::otherTextureSet},
        {values.hasLayeredTextures(), MaterialLoss::layeredTextures},
        {values.isSet("$mat.twosided"), MaterialLoss::twoSided},
        {values.isSet("$mat.gltf.unlit"), MaterialLoss::unlit},
        {isSet("$mat.clearcoat.factor"), MaterialLoss::clearCoat},
        {values.has("$clr.sheen.factor"), MaterialLoss::sheen},
        {isSet("$mat.transmission.factor"), MaterialLoss::transmission},
    };
    for (const auto& [isLost, loss] : losses) {
        if (isLost) source.losses.add(loss, source.name);
    }
}

SnapshotMaterial convert(const MaterialSource& source, std::u16string name) {
    SnapshotMaterial material;
    material.name = std::move(name);
    const bool isFbx = source.file.format == FileFormat::fbx;
    if (isFbx ? isFbxPhysical(source.values) : isPhysical(source.values)) {
        material.className = u"Physical Material";
        material.properties = physicalProperties(isFbx ? fbxPhysical(source) : physicalOf(source));
    } else {
        material.className = u"Standard";
        fillStandard(source, material);
    }
    noteLosses(source);
    return material;
}

}  // namespace

MaterialTable::MaterialTable(const aiScene& scene, const SourceFile& file, BitmapTable& bitmaps,
                             Progress& progress, ImportNotes& notes) {
    const unsigned count = scene.mMaterials == nullptr ? 0 : scene.mNumMaterials;
    MaterialLosses losses;
    progress.beginPhase("Converting materials", count);
    for (unsigned i = 0; i < count; ++i) {
        progress.advance(1);
        ofLibrary_.emplace_back();
        if (isPlaceholder(scene, i, file.format)) continue;
        const MaterialValues values(*scene.mMaterials[i]);
        std::u16string name = shownMaterialName(*scene.mMaterials[i], file);
        ofLibrary_.back() = static_cast<SnapshotRef>(materials_.size());
        const std::string noted = oneLine(toUtf8(name));
        materials_.push_back(convert({values, file, noted, bitmaps, losses}, std::move(name)));
    }
    losses.writeTo(notes, file.shown);
}

std::optional<SnapshotRef> MaterialTable::single(unsigned material) const {
    return material < ofLibrary_.size() ? ofLibrary_[material] : std::nullopt;
}

std::optional<SnapshotRef> MaterialTable::materialOf(std::span<const unsigned> byId,
                                                     std::u16string_view nodeName) {
    if (byId.empty()) return std::nullopt;
    if (byId.size() == 1) return single(byId.front());
    const auto [found, isNew] = multis_.try_emplace(std::vector<unsigned>(byId.begin(), byId.end()),
                                                    static_cast<SnapshotRef>(materials_.size()));
    if (isNew) {
        SnapshotMaterial multi;
        multi.className = u"Multi/Sub-Object";
        multi.name = nodeName;
        for (std::size_t id = 0; id < byId.size(); ++id) {
            multi.subMaterials.push_back({static_cast<std::int32_t>(id), single(byId[id])});
        }
        materials_.push_back(std::move(multi));
    }
    return found->second;
}

}  // namespace velinor
