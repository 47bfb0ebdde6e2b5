// Notes on what a scene file holds and the library has not read.
#pragma once

#include "hosts/assimp/assimp_format.h"
#include "hosts/import/import_notes.h"

namespace velinor {

// Looks at the file once more; one that cannot be opened any more has no notes.
void noteUnreadParts(const SourceFile& file, ImportNotes& notes);

}  // namespace velinor
