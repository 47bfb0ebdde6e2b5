// Puts existing image files into the resources folder.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "materials/file_copy.h"
#include "materials/material_writer_context.h"

namespace velinor {

// Makes `source` the file `targetName` of the resources folder. The same source is copied there once; where
// another file of other content bears that name already, it is replaced, and the report tells both. Throws
// std::filesystem::filesystem_error with the operation word "exists" or "copy" where the target cannot be
// looked for or written.
FileCopy placeTexture(const MaterialWriterContext& context, const std::filesystem::path& source,
                      const std::filesystem::path& targetName);

// Adds a message to the report unless this export has added the same one before.
void reportOnce(const MaterialWriterContext& context, MessageId id, std::string_view subject,
                std::string_view detail);

// Tells that `source` and `other` end on the file `targetName` of the resources folder; each pair is told
// once. An empty `other` is a generated image, none a file that is not of these writers.
void reportEqualNames(const MaterialWriterContext& context, const std::filesystem::path& targetName,
                      const std::filesystem::path& source, const std::optional<std::filesystem::path>& other);

// A path, and a name in the narrow form, as UTF-8 for messages, whatever they hold.
std::string shownPath(const std::filesystem::path& path);
std::string shownBytes(std::string_view bytes);

}  // namespace velinor
