// The cube maps of a package: the one that materials reflect and the one of the sky.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "materials/material_writer_context.h"

namespace velinor {

// The cube map that comes with the exporter. The name is compared as it stands, its case included.
inline constexpr std::string_view kShippedCubeMap = "default.dds";

// Copies the cube map `chosen` into the resources folder under its last component, of which `textureName` is
// the narrow form; for the name "default.dds" the one that comes with the exporter. `purpose` names it in the
// report
// ("reflection map"), which tells where it is missing, is no cube map or has a name that scripts cannot hold.
// Throws as placeTexture does.
void placeCubeMap(const MaterialWriterContext& context, std::string_view purpose,
                  const std::filesystem::path& chosen, std::string_view textureName);

// Whether a script takes `name` as one word: it holds no white space, "{", "}", ":" or quote, does not start
// with "$", and is not empty.
bool isScriptWord(std::string_view name);

// Whether the file is a DDS image that says of itself to be a cube map.
bool isCubeMap(const std::filesystem::path& path);

}  // namespace velinor
