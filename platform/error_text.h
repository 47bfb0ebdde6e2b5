// The words of the system for its errors.
#pragma once

#include <string>
#include <system_error>

namespace velinor {

// What std::error_code::message() says, in UTF-8 on every system: on Windows that is in the code page, and
// letters which the code page lacks are lost.
std::string errorText(const std::error_code& error);

}  // namespace velinor
