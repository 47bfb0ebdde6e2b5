// The body that the fuzz target of the command line and its test share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/command_error.h"
#include "cli/options.h"

namespace velinor {

// Parses `text`, an argument a line, as a command line, and runs nothing. Any result is fine, and so is a
// refusal with a message; every other exception passes through.
inline void tryCommandLine(std::string_view text) {
    std::vector<std::string> arguments;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        arguments.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    try {
        parseCommandLine(arguments);
    } catch (const CommandError& error) {
        if (error.status() != kNotRun || *error.what() == '\0') throw;
    }
}

}  // namespace velinor
