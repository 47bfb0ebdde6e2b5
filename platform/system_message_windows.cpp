#include <windows.h>

#include <array>

#include "base/text.h"
#include "platform/system_message.h"

namespace velinor {

std::string systemMessage(unsigned long code) {
    std::array<wchar_t, 1024> buffer{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        code, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::string text = toUtf8(std::u16string(buffer.data(), buffer.data() + length));
    text.resize(text.find_last_not_of(" .\r\n") + 1);  // none found is -1
    return text.empty() ? "error " + std::to_string(code) : text;
}

}  // namespace velinor
