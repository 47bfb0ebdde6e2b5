// Has the tools make the files that the runtime loads: the binary mesh and the collision mesh.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/report.h"
#include "platform/tool_runner.h"
#include "plugin/export_settings.h"
#include "plugin/package_folders.h"

namespace velinor {

// What the conversion works with. Nothing is owned.
struct MeshConversionContext {
    const PackageFolders& folders;
    const ExportSettings& settings;
    ToolRunner& tools;
    Report& report;
};

// Makes "BASENAME.mesh" of "BASENAME.mesh.xml" and, where the settings ask for it, "BASENAME.mesh_phy.obj",
// unless it is there already. With automatic parameters the collision mesh gets three tries, two of them by
// `faceCount`, the face count as the host reports it. Whether a tool did its work is judged by its file
// alone. What was not made is noted in "failed_mesh.txt" and "failed_physics.txt", in records of exactly 8
// bytes (before line ends are converted), and told in the report.
//
// Always true. Throws std::filesystem::filesystem_error with the operation word "exists" where it cannot be
// told whether the collision mesh is there.
bool convertMesh(const MeshConversionContext& context, const std::string& baseName, std::int32_t faceCount);

// Tells the tools that are not where they should be or cannot be started from there, of those that the
// settings need.
void reportMissingTools(const PackageFolders& folders, const ExportSettings& settings, Report& report);

}  // namespace velinor
