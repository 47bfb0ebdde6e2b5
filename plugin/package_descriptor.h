// The package descriptor where.json: the entry point, the environment, the start camera and the catalogue's
// fields. docs/package-format.md shows the file.
#pragma once

#include <string>

#include "plugin/export_settings.h"
#include "scene/collected_scene.h"

namespace velinor {

// The text of where.json, without the line feed that ends the file. The first camera is the start camera,
// where `exportCamera` is set; the first camera-bounds node limits its movement.
std::string BuildPackageDescriptor(const ExportSettings& settings, const CollectedScene& scene);

}  // namespace velinor
