// Checks the textures that the scripts of a package name.
#pragma once

#include <vector>

#include "tools/ogre/check_report.h"
#include "tools/ogre/package_files.h"
#include "tools/ogre/script_check.h"

namespace velinor {

// Each texture has to be in the package and to decode, a cube map has to have six whole faces. Adds faults to
// `report`; one that concerns a use names the script, one that concerns an image its file.
void checkTextures(const PackageFiles& package, const std::vector<TextureUse>& uses, CheckReport& report);

}  // namespace velinor
