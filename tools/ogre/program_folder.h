// Where the GPU programs are that stand in for those of the runtime.
#pragma once

#include <filesystem>

namespace velinor {

// The folder "ogre_programs" beside the running executable.
std::filesystem::path programFolder();

}  // namespace velinor
