// A look at a scene file before the library sees it.
#pragma once

#include <filesystem>

#include "hosts/assimp/assimp_format.h"

namespace velinor {

// What can be told of `file` by its first bytes; the format is not known yet. Throws SceneError where the
// file is missing, a folder, not readable, empty, of an ending that cannot be read, or known to mislead the
// library: UTF-16 text in formats that then seem empty, and counts of vertices or faces that the file is too
// short for, at which the library takes all memory or hangs.
SourceFile examineSceneFile(const std::filesystem::path& file);

}  // namespace velinor
