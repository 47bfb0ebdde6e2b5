// The state of one export.
#pragma once

#include "host/scene.h"
#include "materials/material_map.h"
#include "plugin/package_folders.h"
#include "scene/collected_scene.h"
#include "scene/name_patterns.h"

namespace velinor {

// What the phases of one export hand to each other. It stands above the folders whose results it holds: those
// take what they need as arguments.
struct ExportContext {
    PackageFolders folders;
    host::IGameScene* scene = nullptr;  // not owned
    NamePatterns patterns;
    CollectedScene nodes;
    MaterialMap materialMap;  // filled by the meshes, read by the materials
};

}  // namespace velinor
