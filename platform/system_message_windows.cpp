#include <windows.h>

#include <array>

#include "base/text.h"
#include "platform/system_message.h"

namespace velinor {

namespace {

// `text` with `subject` for its "%1"; what other numbers stand for nobody knows.
std::string withSubject(std::string_view text, std::string_view subject) {
    std::string filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isPlace =
            text[at] == '%' && at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9';
        if (!isPlace) {
            filled += text[at];
            continue;
        }
        ++at;
        filled += text[at] == '1' ? subject : "...";
    }
    return filled;
}

}  // namespace

std::string systemMessage(unsigned long code, std::string_view subject) {
    std::array<wchar_t, 1024> buffer{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        code, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::string text = toUtf8(std::u16string(buffer.data(), buffer.data() + length));
    text.resize(text.find_last_not_of(" .\r\n") + 1);  // none found is -1
    return text.empty() ? "error " + std::to_string(code) : withSubject(text, subject);
}

}  // namespace velinor
