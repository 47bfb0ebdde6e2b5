// Texts of Windows from and to a code page.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace velinor {

// What the code page lacks becomes the character that the system takes for it.
std::string toCodePage(std::wstring_view text, UINT codePage);

// Malformed sequences become replacement characters.
std::wstring fromCodePage(std::string_view text, UINT codePage);

}  // namespace velinor
