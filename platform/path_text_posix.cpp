#include "platform/path_text.h"

namespace velinor {

std::string narrowPath(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path pathOfNarrow(std::string_view narrow) {
    return std::filesystem::path(narrow);
}

}  // namespace velinor
