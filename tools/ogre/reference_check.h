// Checks what the files of a package say of each other.
#pragma once

#include "tools/ogre/check_report.h"
#include "tools/ogre/package_files.h"
#include "tools/ogre/script_check.h"

namespace velinor {

// The meshes that index.jsx names are there, so is the sky of where.json, and the materials of the meshes in
// `report` have scripts. Adds faults and notes to `report`.
void checkReferences(const PackageFiles& package, const ScriptContent& scripts, CheckReport& report);

}  // namespace velinor
