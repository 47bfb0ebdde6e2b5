#include "hosts/assimp/assimp_materials.h"

#include <assimp/scene.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "hosts/assimp/assimp_text.h"

namespace velinor {
namespace {

struct ClassId {
    std::uint32_t a = 0;
    std::uint32_t b = 0;

    bool operator==(const ClassId&) const = default;
};

// The classes of 3ds Max with a base colour, roughness and metalness. An exporter knows one of them by name,
// so all are presented as that one.
constexpr ClassId kPhysicalClasses[] = {
    {0x3D6B1CEC, 0xDEADC001},  // Physical Material
    {0xD00F1E00, 0xBE77E500},  // PBR Material (Metal/Rough)
    {0xD00F1E00, 0x01DBAD33},  // PBR Material (Spec/Gloss)
    {0x38420192, 0x45FE4E1B},  // glTF Material
    {0xF1551E33, 0x37FB1337},  // OpenPBR Material
};

constexpr std::string_view kPhysicalValues[] = {"$mat.metallicFactor", "$mat.roughnessFactor",
                                                "$mat.glossinessFactor"};

bool isSameButCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(a, b, [lower](char x, char y) { return lower(x) == lower(y); });
}

const aiMaterialProperty* findProperty(const aiMaterial& material, std::string_view key) {
    for (unsigned i = 0; i < material.mNumProperties; ++i) {
        const aiMaterialProperty* property = material.mProperties[i];
        if (property != nullptr && isSameButCase(textOf(property->mKey), key)) return property;
    }
    return nullptr;
}

bool hasRawProperty(const aiMaterial& material) {
    for (unsigned i = 0; i < material.mNumProperties; ++i) {
        const aiMaterialProperty* property = material.mProperties[i];
        if (property != nullptr && textOf(property->mKey).starts_with("$raw.")) return true;
    }
    return false;
}

std::optional<std::uint32_t> integerProperty(const aiMaterial& material, std::string_view key) {
    const aiMaterialProperty* property = findProperty(material, key);
    int value = 0;
    if (property == nullptr || material.Get(property->mKey.C_Str(), property->mSemantic, property->mIndex,
                                            value) != aiReturn_SUCCESS) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(value);
}

bool isPhysical(const aiMaterial& material, FileFormat format) {
    if (format == FileFormat::fbx) {
        const auto a = integerProperty(material, "$raw.3dsMax|ClassIDa");
        const auto b = integerProperty(material, "$raw.3dsMax|ClassIDb");
        return a && b && std::ranges::find(kPhysicalClasses, ClassId{*a, *b}) != std::end(kPhysicalClasses);
    }
    return std::ranges::any_of(kPhysicalValues, [&material](std::string_view key) {
        return findProperty(material, key) != nullptr;
    });
}

aiString nameOf(const aiMaterial& material) {
    aiString name;
    material.Get(AI_MATKEY_NAME, name);
    return name;
}

// Whether the library has made the material up for meshes without one.
bool isPlaceholder(const aiScene& scene, unsigned index, FileFormat format) {
    const aiMaterial* material = scene.mMaterials[index];
    if (material == nullptr) return true;
    const aiString name = nameOf(*material);
    const std::string_view text = textOf(name);
    switch (format) {
        case FileFormat::fbx:
            return text == "DefaultMaterial" && !hasRawProperty(*material);
        case FileFormat::gltf:
            return text.empty() && index + 1 == scene.mNumMaterials;
        case FileFormat::obj:
            return text == "DefaultMaterial" && index == 0;
        case FileFormat::threeDs:
            return text == "%%%DEFAULT";
        case FileFormat::upright:
            return text == "DefaultMaterial" || text.empty();
        default:
            return text == "DefaultMaterial";
    }
}

std::u16string shownMaterialName(const aiMaterial& material, const SourceFile& file) {
    const aiString name = nameOf(material);
    return file.isAsciiFbx ? hostName(aiString(decodeFbxEntities(textOf(name)))) : hostName(name);
}

SnapshotMaterial convert(const aiMaterial& source, const SourceFile& file) {
    SnapshotMaterial material;
    material.className = isPhysical(source, file.format) ? u"Physical Material" : u"Standard";
    material.name = shownMaterialName(source, file);
    return material;
}

}  // namespace

MaterialTable::MaterialTable(const aiScene& scene, const SourceFile& file) {
    const unsigned count = scene.mMaterials == nullptr ? 0 : scene.mNumMaterials;
    for (unsigned i = 0; i < count; ++i) {
        ofLibrary_.emplace_back();
        if (isPlaceholder(scene, i, file.format)) continue;
        ofLibrary_.back() = static_cast<SnapshotRef>(materials_.size());
        materials_.push_back(convert(*scene.mMaterials[i], file));
    }
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
