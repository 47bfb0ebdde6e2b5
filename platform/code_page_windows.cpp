#include "platform/code_page_windows.h"

#include "platform/code_page.h"

namespace velinor {

std::string toCodePage(std::wstring_view text, UINT codePage) {
    const int units = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(codePage, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), units, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring fromCodePage(std::string_view text, UINT codePage) {
    const int bytes = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(codePage, 0, text.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), bytes, wide.data(), size);
    return wide;
}

std::string narrowText(std::u16string_view text) {
    return toCodePage(std::wstring(text.begin(), text.end()), CP_ACP);
}

std::u16string wideText(std::string_view text) {
    const std::wstring wide = fromCodePage(text, CP_ACP);
    return {wide.begin(), wide.end()};
}

}  // namespace velinor
