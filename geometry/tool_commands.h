// The commands that make meshes: what is started, with which arguments.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/tool_runner.h"

namespace velinor {

// The exporter's tools in the folder of plug-ins. Their names are the same on every platform.
std::filesystem::path meshConverterPath(const std::filesystem::path& pluginFolder);
std::filesystem::path meshProcessorPath(const std::filesystem::path& pluginFolder);

// Makes the binary mesh `mesh` of `meshXml`.
ToolCommand converterCommand(const std::filesystem::path& pluginFolder, const std::filesystem::path& meshXml,
                             const std::filesystem::path& mesh);

// Makes the collision mesh `collisionMesh` of `meshXml`, by `option`: words with one blank between them, or
// none.
ToolCommand processorCommand(const std::filesystem::path& pluginFolder, const std::filesystem::path& meshXml,
                             std::string_view option, const std::filesystem::path& collisionMesh);

// The option of a quality, 0 to 5; of any other the one of 1.
std::string_view fallbackOption(std::int32_t fallbackQuality);

// How far a mesh of `faceCount` faces may be simplified when it should have `polycountGoal`, 0 to 0.4: the
// more the larger it is, and a little less with each further attempt. A goal of 0 counts as 1.
float decimationValue(std::int32_t faceCount, std::int32_t polycountGoal, int attempt);

// The option that simplifies a mesh by that much.
std::string decimationOption(float decimation);

}  // namespace velinor
