#include "cli/setting_options.h"

#include <array>

namespace velinor {
namespace {

// clang-format off
const auto kOptions = std::to_array<SettingOption>({
    {"selection-only", &ExportSettings::selectionOnly, "export selected nodes only"},
    {"export-hidden", &ExportSettings::exportHidden, "export hidden nodes, too"},
    {"export-bones", &ExportSettings::exportBones, "stored; without effect"},
    {"export-animation", &ExportSettings::exportAnimation, "stored; without effect"},
    {"export-materials", &ExportSettings::exportMaterials, "write materials, textures and the skybox [on]"},
    {"export-lights", &ExportSettings::exportLights, "export lights [on]"},
    {"helper-lights", &ExportSettings::helperLights, "add helper lights to directional lights [on]"},
    {"helper-light-fraction", &ExportSettings::helperLightFraction, "strength of helper lights [0.8]"},
    {"export-geometry", &ExportSettings::exportGeometry, "export meshes [on]"},
    {"export-camera", &ExportSettings::exportCamera, "export the first camera as start camera [on]"},
    {"export-webtables", &ExportSettings::exportWebtables, "stored; web panels are always exported [on]"},
    {"generate-physical-meshes", &ExportSettings::generatePhysicalMeshes, "make collision meshes [on]"},
    {"fallback-quality", &ExportSettings::fallbackQuality, "quality of collision meshes, 0 to 5 [3]"},
    {"auto-params", &ExportSettings::autoParams, "choose collision parameters automatically [on]"},
    {"polycount-goal", &ExportSettings::polycountGoal, "polygons of a collision mesh [200]"},
    {"clean-export-folder", &ExportSettings::cleanExportFolder, "remove intermediate files at the end [on]"},
    {"ambient-red", &ExportSettings::ambientRed, "ambient light colour, red [0.2]"},
    {"ambient-green", &ExportSettings::ambientGreen, "ambient light colour, green [0.2]"},
    {"ambient-blue", &ExportSettings::ambientBlue, "ambient light colour, blue [0.2]"},
    {"custom-environment-map", &ExportSettings::customEnvironmentMap, "cube map image of the skybox"},
    {"custom-reflection-map", &ExportSettings::customReflectionMap, "reflection map of the materials"},
});
// clang-format on

}  // namespace

std::span<const SettingOption> settingOptions() {
    return kOptions;
}

}  // namespace velinor
