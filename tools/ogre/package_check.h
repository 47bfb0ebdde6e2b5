// Checks a finished package as the runtime would load it, without a display.
#pragma once

#include <filesystem>

#include "tools/ogre/check_report.h"

namespace velinor {

// Loads everything in the package at `folder` with OGRE. `programs` is the folder of the GPU program
// declarations. Throws PackageError where `folder` is no package; whatever is in its files becomes findings.
CheckReport checkPackageWithOgre(const std::filesystem::path& folder, const std::filesystem::path& programs);

}  // namespace velinor
