#include "tools/ogre/program_folder.h"

#include "platform/process_info.h"

namespace velinor {

std::filesystem::path programFolder() {
    return executablePath().parent_path() / "ogre_programs";
}

}  // namespace velinor
