// Paths in the narrow form that file functions of one byte a character take. Which code page when:
// code_page.h.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace velinor {

// `path` in the process's code page of file names: its bytes off Windows, the ANSI code page there (the OEM
// one where the process has set its file functions to that). What the code page lacks becomes the character
// that the system takes for it, which may be "?".
std::string narrowPath(const std::filesystem::path& path);

// The path that narrow file functions take `narrow` for.
std::filesystem::path pathOfNarrow(std::string_view narrow);

// The part of `path` after its last "/" or "\", whichever the system's own separator is.
std::filesystem::path fileNameOf(const std::filesystem::path& path);

// The same in the narrow form. Cut before it is converted: some code pages have the byte of "\" inside other
// characters.
std::string narrowFileName(const std::filesystem::path& path);

// The file that a narrow file function opens when it is given `path`: `path` itself, unless the code page
// lacks some of its characters.
std::filesystem::path asNarrowFile(const std::filesystem::path& path);

// Whether the code page holds all of `path`, so that its narrow form names the same file.
bool hasNarrowForm(const std::filesystem::path& path);

}  // namespace velinor
