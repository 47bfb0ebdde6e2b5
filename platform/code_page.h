// Texts in the code page that the system gives to narrow texts and file names.
#pragma once

#include <string>
#include <string_view>

namespace velinor {

// `text` in the process's ANSI code page on Windows, in UTF-8 elsewhere. What the code page cannot express is
// lost: it becomes the code page's nearest character or "?", in UTF-8 (unpaired surrogates) U+FFFD.
std::string narrowText(std::u16string_view text);

// The text that `text` stands for in that code page. Malformed sequences become replacement characters.
std::u16string wideText(std::string_view text);

}  // namespace velinor
