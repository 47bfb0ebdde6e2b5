// The sky of a package: one unlit material over a cube map.
#pragma once

#include <string>
#include <string_view>

#include "materials/material_writer_context.h"

namespace velinor {

// The name of the sky's material, and of its file without ".material".
inline constexpr std::string_view kSkyMaterialName = "FXUnlitSkyboxCubic";

// The script of the sky over the cube map `textureName`, without the line feed that ends the file.
std::string skyScriptText(std::string_view textureName);

// Writes the sky's script and its cube map, the environment map of the settings, into the resources folder.
// Always true: a missing map, and a script that cannot be written, are told in the report. Throws
// std::filesystem::filesystem_error with the operation word "exists" or "copy" where the map cannot be looked
// for or written.
bool writeSkyMaterial(const MaterialWriterContext& context);

}  // namespace velinor
