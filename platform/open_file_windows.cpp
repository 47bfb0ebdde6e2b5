#include <string>
#include <string_view>

#include "platform/open_file.h"

namespace velinor {

OpenedFile openFile(const std::filesystem::path& path, const char* mode) {
    const std::string_view letters(mode);
    return OpenedFile(_wfopen(path.c_str(), std::wstring(letters.begin(), letters.end()).c_str()));
}

}  // namespace velinor
