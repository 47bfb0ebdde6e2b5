// The plug-in is linked so that the image library is only looked for when it is first called; by then it is
// loaded. Otherwise its absence would keep the host from loading the plug-in, without a word.
#include "plugin/image_library_max.h"

#include <windows.h>

#include <delayimp.h>

#include "base/text.h"
#include "platform/system_message.h"

namespace velinor {
namespace {

constexpr const char* kFileName = "libvips-42.dll";

HMODULE imageLibrary = nullptr;  // stays loaded as long as the plug-in

// What the first call of the library binds to. Left to itself the system would take any library of that name
// that the process has loaded before, another plug-in's included.
FARPROC WINAPI answerLoader(unsigned event, PDelayLoadInfo info) {
    const bool isAsked = event == dliNotePreLoadLibrary && lstrcmpiA(info->szDll, kFileName) == 0;
    return isAsked ? reinterpret_cast<FARPROC>(imageLibrary) : nullptr;
}

}  // namespace

std::optional<std::string> imageLibraryFault(const std::filesystem::path& plugInFile) {
    const std::filesystem::path file = plugInFile.parent_path() / "tolvex" / kFileName;
    // With its own folder searched for the libraries that it needs itself.
    if (imageLibrary == nullptr)
        imageLibrary = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (imageLibrary == nullptr) return utf8Path(file) + ": " + systemMessage(GetLastError());
    __pfnDliNotifyHook2 = answerLoader;
    return std::nullopt;
}

}  // namespace velinor
