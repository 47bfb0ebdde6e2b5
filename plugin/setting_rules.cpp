#include "plugin/setting_rules.h"

#include <algorithm>

namespace velinor {
namespace {

bool isMissing(const std::filesystem::path& path, const PathExists& exists) {
    return path.empty() || !exists(path);
}

}  // namespace

void followLights(ExportSettings& settings) {
    if (!settings.exportLights) settings.helperLights = false;
}

void followPhysicalMeshes(ExportSettings& settings) {
    if (!settings.generatePhysicalMeshes) settings.autoParams = false;
}

std::int32_t clampQuality(std::int32_t quality) {
    return std::clamp(quality, kLowestQuality, kHighestQuality);
}

void replaceMissingMaps(ExportSettings& settings, const PathExists& exists) {
    if (isMissing(settings.customEnvironmentMap, exists))
        settings.customEnvironmentMap = kDefaultEnvironmentMap;
    if (isMissing(settings.customReflectionMap, exists))
        settings.customReflectionMap = settings.customEnvironmentMap;
}

void applySettingRules(ExportSettings& settings, const PathExists& exists) {
    followLights(settings);
    followPhysicalMeshes(settings);
    settings.fallbackQuality = clampQuality(settings.fallbackQuality);
    replaceMissingMaps(settings, exists);
}

}  // namespace velinor
