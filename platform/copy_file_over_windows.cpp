#include <windows.h>

#include <system_error>

#include "platform/copy_file_over.h"

namespace velinor {

// Not std::filesystem::copy_file: that of MinGW's library refuses every target that exists.
void copyFileOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (CopyFileW(from.c_str(), to.c_str(), FALSE) != 0) return;
    throw std::filesystem::filesystem_error(
        "copy", from, to, std::error_code(static_cast<int>(GetLastError()), std::system_category()));
}

}  // namespace velinor
