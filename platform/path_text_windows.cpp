#include <windows.h>

#include <clocale>

#include "platform/path_text.h"

namespace velinor {
namespace {

// The one that narrow file functions of the C library go by.
UINT fileNameCodePage() {
    if (___lc_codepage_func() == CP_UTF8) return CP_UTF8;
    return AreFileApisANSI() != 0 ? CP_ACP : CP_OEMCP;
}

}  // namespace

std::string narrowPath(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const UINT codePage = fileNameCodePage();
    const int units = static_cast<int>(wide.size());
    if (units == 0) return {};
    const int size = WideCharToMultiByte(codePage, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, 0, wide.data(), units, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::filesystem::path pathOfNarrow(std::string_view narrow) {
    const UINT codePage = fileNameCodePage();
    const int bytes = static_cast<int>(narrow.size());
    if (bytes == 0) return {};
    const int size = MultiByteToWideChar(codePage, 0, narrow.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(codePage, 0, narrow.data(), bytes, wide.data(), size);
    return wide;
}

}  // namespace velinor
