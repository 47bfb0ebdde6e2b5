// Libraries that a program is linked to look for when it first calls them, and not when it starts.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velinor {

// Why the library `file` cannot be used, in words for a person; nothing where it can. To be called before
// anything of the library is: on Windows a call of a library that is not there ends the program. It is loaded
// here, with its own folder searched for what it needs itself, and stays loaded; one library per program. Off
// Windows the system has loaded it along with the program.
std::optional<std::string> lateLibraryFault(const std::filesystem::path& file);

}  // namespace velinor
