#include <windows.h>

#include <algorithm>
#include <string>
#include <system_error>

#include "platform/process_info.h"

namespace velinor {

std::filesystem::path executablePath() {
    constexpr std::size_t kUsual = 260;
    constexpr std::size_t kLongest = 32768;
    for (std::size_t size = kUsual;; size = std::min(2 * size, kLongest)) {
        std::wstring path(size, L'\0');
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(size));
        if (length == 0 || (length == size && size == kLongest)) break;
        if (length == size) continue;  // cut off
        path.resize(length);
        return path;
    }
    throw std::filesystem::filesystem_error(
        "GetModuleFileNameW", std::error_code(static_cast<int>(GetLastError()), std::system_category()));
}

}  // namespace velinor
