// Exceptions of commands as lines for the user.
#pragma once

#include <exception>
#include <string>

#include "cli/command_error.h"

namespace velinor {

// A line for the user and the exit status that goes with it.
struct Failure {
    ExitStatus status;
    std::string text;
};

// The failure that `error` stands for. What no command has translated is a host error.
Failure failureOf(const std::exception& error);

}  // namespace velinor
