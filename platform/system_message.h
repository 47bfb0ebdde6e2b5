// The words of Windows for its errors.
#pragma once

#include <string>
#include <string_view>

namespace velinor {

// The text of the error `code`, as GetLastError gives it, in UTF-8 and without an end of line; in the user's
// language, as the system's programs show it. `subject` stands where the text names what it is about ("%1 is
// not a valid application").
std::string systemMessage(unsigned long code, std::string_view subject = "...");

}  // namespace velinor
