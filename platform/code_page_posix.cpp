#include "base/text.h"
#include "platform/code_page.h"

namespace velinor {

std::string narrowText(std::u16string_view text) {
    return toUtf8(text);
}

std::u16string wideText(std::string_view text) {
    return toUtf16Lossy(text);
}

}  // namespace velinor
