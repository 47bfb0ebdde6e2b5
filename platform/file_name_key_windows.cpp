#include <windows.h>

#include <string>

#include "platform/file_name_key.h"

namespace velinor {

std::wstring fileNameKey(const std::filesystem::path& path) {
    std::wstring name = std::filesystem::path(path).make_preferred().native();
    const int units = static_cast<int>(name.size());
    // Unit by unit, as the file system compares; the language of the user plays no part.
    std::wstring key(name.size(), L'\0');
    if (LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, name.data(), units, key.data(), units, nullptr,
                      nullptr, 0) != units)
        return name;
    return key;
}

}  // namespace velinor
