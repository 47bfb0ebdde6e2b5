#include "materials/channels.h"

#include <array>
#include <set>

#include "base/normal_path.h"
#include "base/text.h"
#include "materials/texture_placement.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

constexpr host::HostText kPhysicalClass = u"Physical Material";
constexpr host::HostText kStandardClass = u"Standard";
constexpr host::HostText kBitmapClass = u"Bitmap";
constexpr host::HostText kNormalBumpClass = u"Normal Bump";

constexpr Color kWhite{1, 1, 1, 1};
constexpr Color kFlatNormal{0.5F, 0.5F, 1, 1};

constexpr Color gray(float value) {
    return {value, value, value, 1};
}

ChannelTable freshChannels(const MaterialVariant& variant) {
    ChannelTable channels;
    for (const char* key : {"diffuse", "normal", "roughness", "metallic", "reflection", "light", "ao"})
        channels[key];
    channels["diffuse"].color = kWhite;
    channels["reflection"].textureFileName = variant.reflectionTextureName;
    return channels;
}

void setFixedColors(ChannelTable& channels) {
    channels["normal"].color = kFlatNormal;
    channels["light"].color = kWhite;
    channels["ao"].color = kWhite;
}

// The map inside all wrappers of class "Normal Bump". Null where there is none, and where wrappers hold each
// other.
host::Texmap* unwrapped(host::Texmap* map) {
    std::set<const host::Texmap*> met;
    while (map != nullptr && map->GetClassName() == kNormalBumpClass) {
        if (!met.insert(map).second) return nullptr;
        map = map->GetSubTexmap(0);
    }
    return map;
}

// Fills the channels of one material.
class ChannelCollector {
  public:
    ChannelCollector(const MaterialWriterContext& context, host::IGameMaterial& material,
                     ChannelTable& channels)
        : context_(context),
          material_(material),
          properties_(*material.GetIPropertyContainer()),
          channels_(channels) {}

    void collectPhysical();
    void collectStandard();

  private:
    void mapParameter(host::HostText name, std::string_view key);
    bool floatParameter(host::HostText name, float& value);
    bool colorParameter(host::HostText name, host::Point4& value);
    host::IGameProperty* query(host::HostText name);
    void noteMissing(host::HostText name);

    void collectTextureMap(host::IGameTextureMap& textureMap);
    void collectStandardColors();

    void feed(std::string_view key, const host::Texmap& map);
    ChannelSlot& slot(std::string_view key) { return channels_.find(key)->second; }
    void report(MessageId id, std::string_view detail) {
        reportOnce(context_, id, shownMaterialName(&material_), detail);
    }
    void reportMapNotExported(std::string_view key, const host::Texmap& map) {
        report(MessageId::mapClassNotExported, std::string(key) + ": " + toUtf8(map.GetClassName()));
    }

    const MaterialWriterContext& context_;
    host::IGameMaterial& material_;
    host::IPropertyContainer& properties_;
    ChannelTable& channels_;
    std::string missing_;  // the names of parameters without a fitting value
};

void ChannelCollector::collectPhysical() {
    mapParameter(u"base_color_map", "diffuse");
    if (host::Point4 color; colorParameter(u"base_color", color)) {
        Color& diffuse = slot("diffuse").color;
        diffuse = {color.x, color.y, color.z, diffuse.alpha};
    }
    if (float transparency = 0; floatParameter(u"transparency", transparency))
        slot("diffuse").color.alpha = 1.0F - transparency;
    mapParameter(u"bump_map", "normal");
    mapParameter(u"roughness_map", "roughness");
    if (float roughness = 0; floatParameter(u"roughness", roughness))
        slot("roughness").color = gray(roughness);
    mapParameter(u"metalness_map", "metallic");
    if (float metalness = 0; floatParameter(u"metalness", metalness))
        slot("metallic").color = gray(metalness);
    mapParameter(u"emission_map", "light");
    if (!missing_.empty()) report(MessageId::materialParameterMissing, missing_);
}

void ChannelCollector::mapParameter(host::HostText name, std::string_view key) {
    const host::IGameProperty* property = query(name);
    host::Texmap* held = property == nullptr ? nullptr : property->GetTexmap();
    if (held == nullptr) return;
    const host::Texmap* map = unwrapped(held);
    if (map != nullptr && map->GetClassName() == kBitmapClass) {
        feed(key, *map);
    } else {
        reportMapNotExported(key, map == nullptr ? *held : *map);
    }
}

bool ChannelCollector::floatParameter(host::HostText name, float& value) {
    const host::IGameProperty* property = query(name);
    if (property == nullptr) return false;
    const bool isFloat = property->GetPropertyValue(value);
    if (!isFloat) noteMissing(name);
    return isFloat;
}

bool ChannelCollector::colorParameter(host::HostText name, host::Point4& value) {
    const host::IGameProperty* property = query(name);
    if (property == nullptr) return false;
    const bool isColor = property->GetPropertyValue(value);
    if (!isColor) noteMissing(name);
    return isColor;
}

host::IGameProperty* ChannelCollector::query(host::HostText name) {
    host::IGameProperty* property = properties_.QueryProperty(name);
    if (property == nullptr) noteMissing(name);
    return property;
}

void ChannelCollector::noteMissing(host::HostText name) {
    missing_ += (missing_.empty() ? "" : ", ") + toUtf8(name);
}

void ChannelCollector::collectStandard() {
    for (int i = 0; i < material_.GetNumberOfTextureMaps(); ++i) {
        host::IGameTextureMap* textureMap = material_.GetIGameTextureMap(i);
        if (textureMap != nullptr) collectTextureMap(*textureMap);
    }
    collectStandardColors();
}

void ChannelCollector::collectTextureMap(host::IGameTextureMap& textureMap) {
    struct Feeding {
        int slot;
        std::string_view key;
    };
    constexpr std::array<Feeding, 5> kFeedings{
        {{1, "diffuse"}, {2, "metallic"}, {3, "roughness"}, {5, "light"}, {8, "normal"}}};

    const host::Texmap* held = textureMap.GetMaxTexmap();
    if (held == nullptr) return;
    const int number = textureMap.GetStdMapSlot();
    for (const auto& [slotNumber, key] : kFeedings) {
        if (slotNumber != number) continue;
        const host::Texmap* map = unwrapped(textureMap.GetMaxTexmap());
        // Whatever names a file is taken; only a map that names none is looked at more closely.
        const bool isBitmap = map != nullptr && map->GetClassName() == kBitmapClass;
        if (map != nullptr && (isBitmap || !map->GetMapName().empty())) {
            feed(key, *map);
        } else {
            reportMapNotExported(key, map == nullptr ? *held : *map);
        }
        return;
    }
    report(MessageId::mapSlotNotExported,
           "slot " + std::to_string(number) + ": " + toUtf8(held->GetClassName()));
}

void ChannelCollector::collectStandardColors() {
    if (const host::IGameProperty* property = material_.GetDiffuseData()) {
        host::Point3 color;
        Color& diffuse = slot("diffuse").color;
        if (property->GetPropertyValue(color)) diffuse = {color.x, color.y, color.z, diffuse.alpha};
    }
    // One value serves all three reads: a value that the host cannot give as one number is the one read
    // before it. Packages depend on that, the metallic channel above all: its source is often a colour.
    float value = 0;
    const auto read = [&value](const host::IGameProperty* property) {
        if (property != nullptr) property->GetPropertyValue(value);
        return value;
    };
    slot("diffuse").color.alpha = read(material_.GetOpacityData());
    slot("roughness").color = gray(read(material_.GetGlossinessData()));
    slot("metallic").color = gray(read(material_.GetSpecularData()));
}

void ChannelCollector::feed(std::string_view key, const host::Texmap& map) {
    if (map.GetMapName().empty()) {
        report(MessageId::textureMissing, std::string(key) + ": the map names no file");
        return;
    }
    ChannelSlot& fed = slot(key);
    fed.hostPath = resolveMapFile(context_.host, map.GetMapName());
    fed.sourcePath = lowBytes(fed.hostPath);
    fed.textureFileName = narrowFileName(pathOfNarrow(fed.sourcePath));
}

}  // namespace

std::optional<ChannelTable> collectChannels(const MaterialWriterContext& context,
                                            host::IGameMaterial* material, const MaterialVariant& variant) {
    ChannelTable channels = freshChannels(variant);
    if (material != nullptr) {
        const host::HostText className = material->GetMaterialClass();
        ChannelCollector collector(context, *material, channels);
        if (className == kPhysicalClass) {
            collector.collectPhysical();
        } else if (className == kStandardClass) {
            collector.collectStandard();
        } else {
            return std::nullopt;
        }
    }
    setFixedColors(channels);
    return channels;
}

std::u16string resolveMapFile(host::Host& host, host::HostText fileName) {
    std::u16string path(fileName);
    // A relative name means something to the host, which knows the scene's folder, and nothing to a copy.
    if (host.DoesFileExist(path) && isAbsolutePath(toPath(path))) return path;
    const host::IFileResolutionManager* files = host.GetFileResolutionManager();
    if (files == nullptr) return path;
    if (!files->GetFullFilePath(path, host::AssetType::kXRefAsset))
        files->GetFullFilePath(path, host::AssetType::kBitmapAsset);
    return path;
}

std::string shownMaterialName(const host::IGameMaterial* material) {
    return material == nullptr ? "default" : toUtf8(material->GetMaterialName());
}

}  // namespace velinor
