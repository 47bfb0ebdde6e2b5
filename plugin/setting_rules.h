// The rules that tie settings to each other, wherever the settings come from.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "base/report.h"
#include "plugin/export_settings.h"

namespace velinor {

// Tells whether a file or folder of that name exists.
using PathExists = std::function<bool(const std::filesystem::path&)>;

inline constexpr std::int32_t kLowestQuality = 0;
inline constexpr std::int32_t kHighestQuality = 5;

// The map that stands in for a missing environment map: a bare file name, found beside the exporter's own
// files.
inline constexpr const char* kDefaultEnvironmentMap = "default.dds";

// Without lights there are no helper lights.
void followLights(ExportSettings& settings);

// Without physical meshes their parameters are not chosen automatically.
void followPhysicalMeshes(ExportSettings& settings);

std::int32_t clampQuality(std::int32_t quality);

// The maps in the user's own words, in UTF-8: the paths in the settings may have lost characters on their
// way.
struct GivenMaps {
    std::string environment;
    std::string reflection;
};

// An environment map that does not exist becomes the default one, then a reflection map that does not exist
// becomes the environment map. An empty path never exists, and is not in the report.
void replaceMissingMaps(ExportSettings& settings, const PathExists& exists, const GivenMaps& given,
                        Report& report);

// All of the rules, for settings that come from somewhere else than the dialog's controls.
void applySettingRules(ExportSettings& settings, const PathExists& exists, Report& report);

}  // namespace velinor
