// File-system errors as lines for the user.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace velinor {

// What to do where the package's folder is full already; the entry points have different means.
struct FullFolderAdvice {
    std::string_view package;  // it is a package
    std::string_view other;    // it is none, or not a whole one
};

// What was done, to which files, why it failed and what to do: "remove: C:\work\room: Access denied; ...".
std::string fileErrorText(const std::filesystem::filesystem_error& error, const FullFolderAdvice& advice);

}  // namespace velinor
