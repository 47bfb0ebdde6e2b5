// The words of Windows for its errors.
#pragma once

#include <string>

namespace velinor {

// The text of the error `code`, as GetLastError gives it, in UTF-8 and without an end of line; in the user's
// language, as the system's programs show it.
std::string systemMessage(unsigned long code);

}  // namespace velinor
