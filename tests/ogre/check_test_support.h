// Running the check of packages.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/run_command.h"

namespace velinor {

inline CommandResult runCheck(const std::vector<std::string>& arguments) {
    return runProgram(TOLVEX_OGRE_CHECK, arguments);
}

inline CommandResult checkPackage(const std::filesystem::path& package) {
    return runCheck({package.string()});
}

}  // namespace velinor
