// Material scripts: one physically based template, in which the name, the transparency and seven textures
// vary.
#pragma once

#include <string>
#include <string_view>

#include "materials/channels.h"
#include "materials/material_map.h"
#include "materials/material_writer_context.h"

namespace velinor {

// The file names of a script's textures, in the order in which it names them.
struct MaterialTextures {
    std::string_view diffuse;           // diffuse_map
    std::string_view normal;            // normal_map
    std::string_view roughness;         // roughness_map
    std::string_view metallic;          // metallic_map
    std::string_view reflection;        // reflection_map, a cube map
    std::string_view light;             // light_map
    std::string_view ambientOcclusion;  // ambientocclusion_map
};

// The script of the material `name`, without the line feed that ends the file. A blended pass shows both
// sides of its faces.
std::string materialScriptText(std::string_view name, bool isTransparent, const MaterialTextures& textures);

// Writes the script and the textures of one form of `material`, which may be null, into the resources folder.
// False where the material's class is not exported: a listing of its properties is written instead. What
// cannot be exported, and a script that cannot be written, is told in the report. Throws
// std::filesystem::filesystem_error with the operation word "exists" or "copy" where a texture cannot be
// looked for or written.
bool writeMaterialScript(const MaterialWriterContext& context, host::IGameMaterial* material,
                         const MaterialVariant& variant);

}  // namespace velinor
