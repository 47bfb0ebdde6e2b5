#include "platform/code_page.h"

#include <windows.h>

namespace velinor {

std::string narrowText(std::u16string_view text) {
    const std::wstring wide(text.begin(), text.end());
    const int units = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), units, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::u16string wideText(std::string_view text) {
    const int bytes = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), size);
    return {wide.begin(), wide.end()};
}

}  // namespace velinor
