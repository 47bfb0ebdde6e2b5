// The scene descriptor index.jsx: nodes with their placement, meshes, lights and physical shapes.
// docs/package-format.md shows the file.
#pragma once

#include "base/progress.h"
#include "base/report.h"
#include "base/text_sink.h"
#include "plugin/export_settings.h"
#include "scene/scene_node_record.h"

namespace velinor {

// Writes the text of index.jsx for the tree below `rootRecord`, without the line feed that ends the file.
// Reads `helperLights` and `helperLightFraction`. Placements that look wrong are told in the report.
void writeSceneDescriptor(const SceneNodeRecord& rootRecord, const ExportSettings& settings, TextSink& sink,
                          Report& report, Progress& progress);

}  // namespace velinor
