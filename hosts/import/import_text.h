// Text out of scene files that say nothing of their encoding, and the comparison of names.
#pragma once

#include <string>
#include <string_view>

namespace velinor {

// UTF-16 of bytes: UTF-8 where they are well-formed, otherwise Windows-1252, the code page of most writers
// that know nothing of UTF-8.
std::u16string hostText(std::string_view bytes);

// UTF-16 of Windows-1252. Its five unassigned bytes stand for the control characters of their numbers.
std::u16string fromWindows1252(std::string_view bytes);

// `text` in one line without control characters: runs of blanks and line ends become one blank.
std::string oneLine(std::string_view text);

// `text` without blanks, tabs and line ends at both ends.
std::string_view trimmed(std::string_view text);

// `text` with its ASCII letters in small, and whether two texts are the same in this form.
std::string lowerCase(std::string text);
bool isSameButCase(std::string_view a, std::string_view b);

}  // namespace velinor
