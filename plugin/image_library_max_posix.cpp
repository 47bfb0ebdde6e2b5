#include "plugin/image_library_max.h"

namespace velinor {

std::optional<std::string> imageLibraryFault(const std::filesystem::path& /*plugInFile*/) {
    return std::nullopt;
}

}  // namespace velinor
