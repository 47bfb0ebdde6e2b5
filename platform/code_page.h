// Narrow texts in the code page of the process. Which code page when, on Windows:
//
// - narrowText, wideText (here): the ANSI one. Settings that are kept as narrow texts.
// - narrowPath, pathOfNarrow (path_text.h): that of the C library's file functions. It is the ANSI one, too,
//   unless the process has set them to the OEM one, or its locale to UTF-8.
// - utf8Path, pathOfUtf8 (base/text.h): none. Messages, documents, and libraries that take UTF-8.
//
// Off Windows all three are UTF-8.
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
