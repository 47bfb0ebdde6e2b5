// Text files of the resources folder.
#pragma once

#include <string_view>

#include "materials/material_writer_context.h"

namespace velinor {

// Writes `text` and a line feed into the file `fileName` of the resources folder, in place of what is there.
// A file that cannot be written is told in the report.
void writeResourceText(const MaterialWriterContext& context, std::string_view fileName,
                       std::string_view text);

}  // namespace velinor
