// Starting other programs and waiting for them.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velinor {

// A program with its arguments, in both forms in which systems take them, as narrow text (see path_text.h).
// No shell ever sees either.
struct ToolCommand {
    std::string commandLine;             // for Windows, which starts programs by one text
    std::vector<std::string> arguments;  // the same as a list, the program's path first, for the others

    bool operator==(const ToolCommand&) const = default;
};

// How a tool's run ended.
struct ToolRun {
    enum class End {
        exited,      // by itself; `code` is its exit status
        crashed,     // by a signal, on Windows by an exception; `code` is its number
        notStarted,  // `output` says why, in the system's words
    };
    End end = End::exited;
    int code = 0;
    std::string output;  // the beginning of what it printed, both streams in the order in which it came
};

// Whether the tool says that it did its work. What it left on disk is another matter.
inline bool hasSucceeded(const ToolRun& run) {
    return run.end == ToolRun::End::exited && run.code == 0;
}

// For a person: "exit status 1: cannot read x".
std::string describe(const ToolRun& run);

// Runs tools, one at a time.
class ToolRunner {
  public:
    virtual ~ToolRunner() = default;

    // Starts the tool and waits for its end, however long it takes.
    virtual ToolRun run(const ToolCommand& command) = 0;
};

// Runs tools as processes of the operating system. They read nothing from standard input and inherit this
// process's environment.
class SystemToolRunner final : public ToolRunner {
  public:
    // Tools run in `workingFolder`; without one, in this process's own. `whileWaiting` is called some times a
    // second while a tool runs; if it throws, the tool is ended and the exception passed on.
    explicit SystemToolRunner(std::optional<std::filesystem::path> workingFolder = std::nullopt,
                              std::function<void()> whileWaiting = {});

    ToolRun run(const ToolCommand& command) override;

  private:
    std::optional<std::filesystem::path> workingFolder_;
    std::function<void()> whileWaiting_;
};

}  // namespace velinor
