// What the writers of materials, textures and the sky work with.
#pragma once

#include "base/progress.h"
#include "base/report.h"
#include "host/core.h"
#include "materials/placed_files.h"
#include "plugin/export_settings.h"
#include "plugin/package_folders.h"

namespace velinor {

// One export, as the writers see it. Nothing is owned.
struct MaterialWriterContext {
    const PackageFolders& folders;
    const ExportSettings& settings;
    host::Host& host;
    Report& report;
    PlacedFiles& placed;  // fresh for each export
    Progress& progress;   // advances by 1 for each script; by 0, often, during long copies
};

}  // namespace velinor
