// What the user can choose before an export.
#pragma once

#include <cstdint>
#include <filesystem>

namespace velinor {

// Every option of the options dialog, with its default. The comments give the dialog's text.
struct ExportSettings {
    bool selectionOnly = false;          // "Selection only"
    bool exportHidden = false;           // "Export hidden"
    bool exportBones = false;            // "Bones"; stored, read by no phase
    bool exportAnimation = false;        // "Animation"; stored, read by no phase
    bool exportMaterials = true;         // "Materials": materials, textures and skybox
    bool exportLights = true;            // "Lights"
    bool helperLights = true;            // "Helper lights"
    float helperLightFraction = 0.8F;    // strength of helper lights; the dialog shows it in percent
    bool exportGeometry = true;          // "Geometry"
    bool spareFlagA = true;              // no control and no reader
    bool exportCamera = true;            // "Camera"
    bool exportWebtables = true;         // "Webtables"; stored, read by no phase: panels are always exported
    bool spareFlagB = true;              // no control and no reader
    bool generatePhysicalMeshes = true;  // "Generate physical meshes"
    std::int32_t fallbackQuality = 3;    // "Fallback quality setting (0-5):"
    bool autoParams = true;              // "Auto-params"
    std::int32_t polycountGoal = 200;    // "Polycount goal:"
    bool cleanExportFolder = true;       // "Clean export folder"
    float ambientRed = 0.2F;             // "Ambient light color:"
    float ambientGreen = 0.2F;
    float ambientBlue = 0.2F;
    std::filesystem::path customEnvironmentMap;  // "Custom environment map:"
    std::filesystem::path customReflectionMap;   // "Custom reflection map:"

    bool operator==(const ExportSettings&) const = default;
};

}  // namespace velinor
