#include "platform/process_info.h"

#include <windows.h>

#include <array>

namespace velinor {

std::filesystem::path executablePath() {
    std::array<wchar_t, 260> buffer{};
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    return std::filesystem::path(buffer.data(), buffer.data() + length);
}

}  // namespace velinor
