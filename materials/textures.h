// The textures of one material: every channel gets a file of the resources folder.
#pragma once

#include <string_view>

#include "materials/channels.h"
#include "materials/material_writer_context.h"

namespace velinor {

// Copies the bitmaps of `channels` into the resources folder under sanitised names, makes an image of its
// colour for each channel without one, and places the reflection map. Updates the slots' names. A bitmap that
// is missing or cannot be read keeps its names and is told in the report, of which `materialName` is the
// subject. Throws std::filesystem::filesystem_error with the operation word "exists" or "copy" where a target
// cannot be looked for or written.
void prepareTextures(const MaterialWriterContext& context, std::string_view materialName,
                     ChannelTable& channels);

}  // namespace velinor
