// The meshes of an export: all are written first, then each is converted.
#pragma once

#include "base/progress.h"
#include "base/report.h"
#include "host/core.h"
#include "materials/material_map.h"
#include "platform/tool_runner.h"
#include "plugin/export_settings.h"
#include "plugin/package_folders.h"
#include "scene/collected_scene.h"

namespace velinor {

// What the passes work with. Nothing is owned.
struct MeshPassContext {
    const PackageFolders& folders;
    const ExportSettings& settings;
    host::Host& host;
    ToolRunner& tools;
    MaterialMap& materialMap;  // filled with what the meshes use
    Report& report;
    Progress& progress;
};

// Writes the meshes of `meshNodes` and has them converted, in the order of the list. False at the first one
// that fails, with which the passes end. Two nodes whose meshes have one file name are told in the report.
bool exportMeshes(const MeshPassContext& context, const NodeList& meshNodes);

}  // namespace velinor
