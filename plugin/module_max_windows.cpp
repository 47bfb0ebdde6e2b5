#include "plugin/module_max.h"

#include <windows.h>

#include <array>

namespace velinor {
namespace {

HINSTANCE attachedModule = nullptr;

}  // namespace

HINSTANCE moduleHandle() {
    return attachedModule;
}

const MCHAR* stringResource(StringResource id) {
    static std::array<wchar_t, 256> buffer{};
    const int length =
        LoadStringW(attachedModule, static_cast<UINT>(id), buffer.data(), static_cast<int>(buffer.size()));
    return length > 0 ? buffer.data() : nullptr;
}

std::filesystem::path modulePath() {
    constexpr std::size_t kLongestPath = 32768;
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(attachedModule, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

}  // namespace velinor

// Runs while the system holds its lock on loading: the least is done here.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        MaxSDK::Util::UseLanguagePackLocale();
        velinor::attachedModule = module;
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}
