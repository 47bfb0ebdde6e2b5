// Checks the binary meshes of a package.
#pragma once

#include "tools/ogre/check_report.h"
#include "tools/ogre/package_files.h"

namespace velinor {

// Reads every mesh strictly, and those that pass with OGRE, too. Adds what it finds, and a summary of each
// mesh that has the right form, to `report`.
void checkMeshes(const PackageFiles& package, CheckReport& report);

}  // namespace velinor
