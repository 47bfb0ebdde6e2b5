#include "platform/file_name_key.h"

namespace velinor {

std::string fileNameKey(const std::filesystem::path& path) {
    return path.native();
}

}  // namespace velinor
