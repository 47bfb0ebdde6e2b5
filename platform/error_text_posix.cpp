#include "platform/error_text.h"

namespace velinor {

std::string errorText(const std::error_code& error) {
    return error.message();
}

}  // namespace velinor
