#include <windows.h>

#include <delayimp.h>

#include "base/text.h"
#include "platform/late_library.h"
#include "platform/system_message.h"

namespace velinor {
namespace {

HMODULE lateLibrary = nullptr;  // stays loaded as long as the program, or the plug-in
std::wstring lateLibraryName;

bool isLateLibrary(std::string_view name) {
    return lstrcmpiW(std::wstring(name.begin(), name.end()).c_str(), lateLibraryName.c_str()) == 0;
}

// What the first call of the library binds to. Left to itself the system would take any library of that name
// that the process has loaded before, another plug-in's included.
FARPROC WINAPI answerLoader(unsigned event, PDelayLoadInfo info) {
    const bool isAsked =
        event == dliNotePreLoadLibrary && lateLibrary != nullptr && isLateLibrary(info->szDll);
    return isAsked ? reinterpret_cast<FARPROC>(lateLibrary) : nullptr;
}

}  // namespace

std::optional<std::string> lateLibraryFault(const std::filesystem::path& file) {
    if (lateLibrary == nullptr) {
        lateLibrary = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        if (lateLibrary == nullptr) {
            const DWORD error = GetLastError();
            return utf8Path(file) + ": " + systemMessage(error, utf8Path(file.filename()));
        }
        lateLibraryName = file.filename().native();
    }
#ifndef _MSC_VER
    __pfnDliNotifyHook2 = answerLoader;
#endif
    return std::nullopt;
}

}  // namespace velinor

#ifdef _MSC_VER
// There the hook is a constant that the program defines.
extern "C" const PfnDliHook __pfnDliNotifyHook2 = velinor::answerLoader;
#endif
