#include <system_error>

#include "platform/copy_file_over.h"

namespace velinor {

void copyFileOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    if (error) throw fs::filesystem_error("copy", from, to, error);
}

}  // namespace velinor
