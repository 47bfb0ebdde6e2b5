// Brings the materials of a package into a form in which OGRE alone can draw them.
#pragma once

#include <string>

#include "tools/ogre/package_files.h"
#include "tools/ogre/render_session.h"

namespace velinor {

// The material for surfaces that have none.
inline constexpr const char* kClayMaterial = "viewer/clay";

// Parses the programs, and the scripts of the package; then gives the sky's pass programs, has blended passes
// sorted by distance, and replaces textures that cannot be loaded. `tell` gets what is wrong with scripts and
// textures. Needs a RenderSession.
void loadMaterials(const PackageFiles& package, const std::filesystem::path& programs, const Tell& tell);

}  // namespace velinor
