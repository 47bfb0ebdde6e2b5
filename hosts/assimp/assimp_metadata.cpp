#include "hosts/assimp/assimp_metadata.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "hosts/import/import_text.h"

namespace velinor {
namespace {

// Properties that FBX writers give every node of their own accord; all others are the user's.
constexpr std::string_view kFbxOwn[] = {
    "AspectH",
    "AspectHeight",
    "AspectRatioMode",
    "AspectW",
    "AspectWidth",
    "AxisLen",
    "BackgroundMode",
    "BBoxMax",
    "BBoxMin",
    "Color",
    "DefaultAttributeIndex",
    "FilmFormatIndex",
    "ForegroundTransparent",
    "Freeze",
    "GateFit",
    "InheritType",
    "IsNull",
    "LODBox",
    "LookAtProperty",
    "MaxDampRangeX",
    "MaxDampRangeY",
    "MaxDampRangeZ",
    "MaxDampStrengthX",
    "MaxDampStrengthY",
    "MaxDampStrengthZ",
    "MaxHandle",
    "MaxXform",
    "MinDampRangeX",
    "MinDampRangeY",
    "MinDampRangeZ",
    "MinDampStrengthX",
    "MinDampStrengthY",
    "MinDampStrengthZ",
    "NegativePercentShapeSupport",
    "PreferedAngleX",
    "PreferedAngleY",
    "PreferedAngleZ",
    "PrimaryVisibility",
    "QuaternionInterpolate",
    "RenderingMode",
    "ResolutionMode",
    "RotationActive",
    "RotationMaxX",
    "RotationMaxY",
    "RotationMaxZ",
    "RotationMinX",
    "RotationMinY",
    "RotationMinZ",
    "RotationOrder",
    "RotationSpaceForLimitOnly",
    "RotationStiffnessX",
    "RotationStiffnessY",
    "RotationStiffnessZ",
    "ScalingActive",
    "ScalingMax",
    "ScalingMin",
    "ScalingMaxX",
    "ScalingMaxY",
    "ScalingMaxZ",
    "ScalingMinX",
    "ScalingMinY",
    "ScalingMinZ",
    "Show",
    "TranslationActive",
    "TranslationMaxX",
    "TranslationMaxY",
    "TranslationMaxZ",
    "TranslationMinX",
    "TranslationMinY",
    "TranslationMinZ",
    "UDP3DSMAX",
    "UserProperties",
    "UpVectorProperty",
    "ViewFrustum",
    "VisibilityInheritance",
    "currentUVSet",
    "filmboxTypeID",
    "lockInfluenceWeights",
    "notes",
};

std::optional<std::int32_t> asInteger(double value) {
    const double least = std::numeric_limits<std::int32_t>::min();
    const double most = std::numeric_limits<std::int32_t>::max();
    if (!(value >= least && value <= most) || value != std::trunc(value)) return std::nullopt;
    return static_cast<std::int32_t>(value);
}

std::optional<std::int32_t> asInteger(const aiMetadataEntry& entry) {
    if (entry.mData == nullptr) return std::nullopt;
    switch (entry.mType) {
        case AI_BOOL:
            return *static_cast<const bool*>(entry.mData) ? 1 : 0;
        case AI_INT32:
            return *static_cast<const std::int32_t*>(entry.mData);
        case AI_UINT64: {
            const auto value = *static_cast<const std::uint64_t*>(entry.mData);
            if (value > std::uint64_t{std::numeric_limits<std::int32_t>::max()}) return std::nullopt;
            return static_cast<std::int32_t>(value);
        }
        case AI_FLOAT:
            return asInteger(double{*static_cast<const float*>(entry.mData)});
        case AI_DOUBLE:
            return asInteger(*static_cast<const double*>(entry.mData));
        default:
            return std::nullopt;
    }
}

// The whole of `text` as a decimal integer.
std::optional<std::int32_t> asInteger(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// The first of several values of one key counts.
void addUserProperty(std::u16string key, std::int32_t value, NodeMetadata& data) {
    if (key == u"extras") {
        data.hasReservedProperty = true;
    } else {
        data.userProperties.try_emplace(std::move(key), value);
    }
}

// Lines "key = value", as 3ds Max keeps them.
void readPropertyText(std::string_view text, NodeMetadata& data) {
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto equals = line.find('=');
        if (equals == std::string_view::npos || trimmed(line.substr(0, equals)).empty()) continue;
        if (const auto value = asInteger(trimmed(line.substr(equals + 1)))) {
            addUserProperty(toUtf16Lossy(trimmed(line.substr(0, equals))), *value, data);
        } else {
            ++data.otherProperties;
        }
    }
}

void readFbxPropertyText(const aiMetadata& metadata, bool isAscii, NodeMetadata& data) {
    aiString raw = metadataValue<aiString>(&metadata, "UserProperties").value_or(aiString());
    if (raw.length == 0) raw = metadataValue<aiString>(&metadata, "UDP3DSMAX").value_or(aiString());
    std::string text = isAscii ? decodeFbxEntities(textOf(raw)) : std::string(textOf(raw));
    if (isCutOff(raw)) {
        data.isTextCut = true;
        text.erase(std::min(text.find_last_of("\r\n"), text.size()));
    }
    readPropertyText(text, data);
}

bool isOfTheWriter(FileFormat format, std::string_view key) {
    switch (format) {
        case FileFormat::fbx:
            return key.starts_with("mr displacement") || std::ranges::find(kFbxOwn, key) != std::end(kFbxOwn);
        case FileFormat::gltf:
            return key == "extensions";
        case FileFormat::collada:
            return key == "Collada_id" || key == "Collada_sid";
        default:
            return false;
    }
}

const aiMetadata* nested(const aiMetadata* data, const char* key) {
    for (unsigned i = 0; data != nullptr && i < data->mNumProperties; ++i) {
        const aiMetadataEntry& entry = data->mValues[i];
        if (textOf(data->mKeys[i]) == key && entry.mType == AI_AIMETADATA) {
            return static_cast<const aiMetadata*>(entry.mData);
        }
    }
    return nullptr;
}

bool isHidden(const aiMetadata& data, FileFormat format) {
    std::optional<bool> visible;
    if (format == FileFormat::fbx) visible = metadataValue<bool>(&data, "Show");
    if (format == FileFormat::gltf) {
        visible = metadataValue<bool>(nested(nested(&data, "extensions"), "KHR_node_visibility"), "visible");
    }
    return visible == false;
}

}  // namespace

NodeMetadata readNodeMetadata(const aiNode& node, const SourceFile& file) {
    NodeMetadata data;
    if (node.mMetaData == nullptr) return data;
    const aiMetadata& metadata = *node.mMetaData;
    data.hidden = isHidden(metadata, file.format);
    if (file.format == FileFormat::fbx) {
        readFbxPropertyText(metadata, file.isAsciiFbx, data);
        data.isNull = metadataValue<bool>(&metadata, "IsNull");
    }
    for (unsigned i = 0; i < metadata.mNumProperties; ++i) {
        if (isOfTheWriter(file.format, textOf(metadata.mKeys[i]))) continue;
        if (const auto value = asInteger(metadata.mValues[i])) {
            addUserProperty(hostName(metadata.mKeys[i]), *value, data);
        } else {
            ++data.otherProperties;
        }
    }
    return data;
}

std::optional<std::uint64_t> gltfLightOf(const aiNode& node) {
    const aiMetadata* punctual = nested(nested(node.mMetaData, "extensions"), "KHR_lights_punctual");
    return metadataValue<std::uint64_t>(punctual, "light");
}

}  // namespace velinor
