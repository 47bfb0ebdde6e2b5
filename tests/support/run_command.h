// Runs the command as a user does: arguments in, exit status and both streams out. No shell in between.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velinor {

struct CommandResult {
    // The exit status; 128 and the signal's number where a signal ended the command. On Windows a crash is an
    // exit status, too.
    int status = -1;
    std::string out;
    std::string err;
};

struct CommandInput {
    std::string standardInput;
    std::filesystem::path folder;              // where the command runs; empty: here
    std::optional<std::uint64_t> largestFile;  // bytes; writing more fails as on a full disk; not on Windows
    std::optional<std::filesystem::path> outFile;  // standard output goes there instead of into the result
};

inline CommandInput withStandardInput(const std::string& text) {
    CommandInput input;
    input.standardInput = text;
    return input;
}

// As on a disk that takes files of `largestFile` bytes and no larger ones.
inline CommandInput onFullDisk(std::uint64_t largestFile) {
    CommandInput input;
    input.largestFile = largestFile;
    return input;
}

inline CommandInput printingTo(const std::filesystem::path& file) {
    CommandInput input;
    input.outFile = file;
    return input;
}

// Runs `program`, which is a full path, and waits for its end. Arguments are UTF-8 (on POSIX, any bytes).
// Throws std::system_error where it cannot be started.
CommandResult runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                         const CommandInput& input = {});

// The content of a file in the folder that belongs to the exporter, beside the built tolvex.
std::string installedFile(const std::string& name);

// Runs the built tolvex.
CommandResult runTolvex(const std::vector<std::string>& arguments, const CommandInput& input = {});

}  // namespace velinor
