// Whether the files are there that index.jsx names.
#pragma once

#include <filesystem>

#include "base/report.h"
#include "plugin/export_settings.h"
#include "scene/scene_node_record.h"

namespace velinor {

// Tells each mesh file and collision mesh that a node of the tree refers to and that is not in
// `resourcesFolder`, with the first node that does.
void reportMissingMeshes(const SceneNodeRecord& rootRecord, const ExportSettings& settings,
                         const std::filesystem::path& resourcesFolder, Report& report);

}  // namespace velinor
