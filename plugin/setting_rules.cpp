#include "plugin/setting_rules.h"

#include <algorithm>

#include "base/text.h"

namespace velinor {
namespace {

bool isMissing(const std::filesystem::path& path, const PathExists& exists) {
    return path.empty() || !exists(path);
}

// In quotes, since blanks count.
void reportReplaced(const std::string& given, const std::filesystem::path& successor, Report& report) {
    if (given.empty()) return;
    report.add(MessageId::customMapReplaced, '"' + given + '"', utf8Path(successor) + " is used");
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

void replaceMissingMaps(ExportSettings& settings, const PathExists& exists, const GivenMaps& given,
                        Report& report) {
    if (isMissing(settings.customEnvironmentMap, exists)) {
        settings.customEnvironmentMap = kDefaultEnvironmentMap;
        reportReplaced(given.environment, settings.customEnvironmentMap, report);
    }
    if (isMissing(settings.customReflectionMap, exists)) {
        settings.customReflectionMap = settings.customEnvironmentMap;
        reportReplaced(given.reflection, settings.customReflectionMap, report);
    }
}

void applySettingRules(ExportSettings& settings, const PathExists& exists, Report& report) {
    followLights(settings);
    followPhysicalMeshes(settings);
    settings.fallbackQuality = clampQuality(settings.fallbackQuality);
    const GivenMaps given{utf8Path(settings.customEnvironmentMap), utf8Path(settings.customReflectionMap)};
    replaceMissingMaps(settings, exists, given, report);
}

}  // namespace velinor
