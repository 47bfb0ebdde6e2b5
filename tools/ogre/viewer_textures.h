// Textures that stand in for those that a package lacks.
#pragma once

#include <string>

namespace velinor {

// Makes the stand-ins. Once, and with a render system.
void makeStandInTextures();

// The stand-in for a texture unit of a package's material: a flat normal for "normal_map", and so on.
std::string standInTexture(const std::string& unit, bool isCube);

}  // namespace velinor
