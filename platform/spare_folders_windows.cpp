#include <windows.h>

#include <array>
#include <cstdlib>
#include <string>

#include "platform/spare_folders.h"

namespace velinor {

std::filesystem::path shortPath(const std::filesystem::path& path) {
    std::wstring text(GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
    const DWORD length = GetShortPathNameW(path.c_str(), text.data(), static_cast<DWORD>(text.size()));
    if (length == 0 || length >= text.size()) return path;
    text.resize(length);
    return text;
}

std::vector<std::filesystem::path> sharedTemporaryFolders() {
    std::vector<std::filesystem::path> folders;
    for (const wchar_t* variable : {L"PUBLIC", L"ProgramData"}) {
        if (const wchar_t* folder = _wgetenv(variable)) folders.emplace_back(folder);
    }
    std::array<wchar_t, MAX_PATH> windows{};
    const UINT length = GetWindowsDirectoryW(windows.data(), static_cast<UINT>(windows.size()));
    if (length > 0 && length < windows.size())
        folders.push_back(std::filesystem::path(windows.data()) / "Temp");
    return folders;
}

}  // namespace velinor
