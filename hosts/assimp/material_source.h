// What the conversion of one material works with.
#pragma once

#include <string>

#include "hosts/assimp/assimp_material_values.h"
#include "hosts/assimp/bitmap_table.h"
#include "hosts/import/material_losses.h"

namespace velinor {

// Colours and numbers are taken as the file holds them: where a file format means linear values, they are
// linear; where its writer passes a host's own values through, they are what that host would answer.
struct MaterialSource {
    const MaterialValues& values;
    const SourceFile& file;
    std::string name;  // UTF-8, for notes
    BitmapTable& bitmaps;
    MaterialLosses& losses;
};

}  // namespace velinor
