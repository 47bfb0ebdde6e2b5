// The plug-in is linked so that the image library is only looked for when it is first called; by then it is
// loaded. Otherwise its absence would keep the host from loading the plug-in, without a word.
#include "plugin/image_library_max.h"

#include <windows.h>

#include "base/text.h"
#include "platform/system_message.h"

namespace velinor {

std::optional<std::string> imageLibraryFault(const std::filesystem::path& plugInFile) {
    const std::filesystem::path file = plugInFile.parent_path() / "tolvex" / "libvips-42.dll";
    // With its own folder searched for the libraries that it needs itself.
    if (LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH) != nullptr) return std::nullopt;
    const DWORD error = GetLastError();
    return utf8Path(file) + ": " + systemMessage(error);
}

}  // namespace velinor
