#include <windows.h>

#include <string>
#include <system_error>

#include "platform/process_info.h"

namespace velinor {

std::filesystem::path executablePath() {
    constexpr std::size_t kUsual = 260;
    constexpr std::size_t kLongest = 32768;
    for (std::wstring path(kUsual, L'\0'); path.size() <= kLongest; path.resize(2 * path.size())) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) break;
        if (length == path.size()) continue;  // cut off
        path.resize(length);
        return path;
    }
    throw std::filesystem::filesystem_error(
        "GetModuleFileNameW", std::error_code(static_cast<int>(GetLastError()), std::system_category()));
}

}  // namespace velinor
