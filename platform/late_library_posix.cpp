#include "platform/late_library.h"

namespace velinor {

std::optional<std::string> lateLibraryFault(const std::filesystem::path& /*file*/) {
    return std::nullopt;
}

}  // namespace velinor
