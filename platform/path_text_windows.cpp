#include <clocale>

#include "platform/code_page_windows.h"
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
    return toCodePage(path.native(), fileNameCodePage());
}

std::filesystem::path pathOfNarrow(std::string_view narrow) {
    return fromCodePage(narrow, fileNameCodePage());
}

}  // namespace velinor
