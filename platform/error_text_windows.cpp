#include "platform/error_text.h"

#include "platform/system_message.h"

namespace velinor {

// The C library's own errors are told in English and ASCII.
std::string errorText(const std::error_code& error) {
    if (error.category() != std::system_category()) return error.message();
    return systemMessage(static_cast<unsigned long>(error.value()));
}

}  // namespace velinor
