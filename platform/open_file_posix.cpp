#include "platform/open_file.h"

namespace velinor {

OpenedFile openFile(const std::filesystem::path& path, const char* mode) {
    return OpenedFile(std::fopen(path.c_str(), mode));
}

}  // namespace velinor
