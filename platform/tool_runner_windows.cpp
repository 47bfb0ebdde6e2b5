#include <algorithm>
#include <system_error>

#include "base/text.h"
#include "platform/child_process_windows.h"
#include "platform/path_text.h"
#include "platform/system_message.h"
#include "platform/tool_runner.h"

namespace velinor {
namespace {

constexpr std::size_t kOutputKept = std::size_t{8} << 10U;
constexpr std::size_t kLongestCommandLine = 32767;  // with the zero at its end
constexpr DWORD kTickMilliseconds = 50;

ToolRun notStarted(std::string reason) {
    return {ToolRun::End::notStarted, 0, std::move(reason)};
}

// Ended with its owner where it has not ended before.
class RunningTool {
  public:
    explicit RunningTool(Handle process) : process_(std::move(process)) {}
    RunningTool(const RunningTool&) = delete;
    RunningTool& operator=(const RunningTool&) = delete;
    ~RunningTool() {
        if (hasEnded(0)) return;
        TerminateProcess(process_.get(), 1);
        hasEnded(INFINITE);
    }

    bool hasEnded(DWORD milliseconds) const { return waitForEnd(process_, milliseconds); }
    DWORD exitCode() const { return exitCodeOf(process_); }

  private:
    Handle process_;
};

// Reads some of the output and keeps the beginning of it. Whether anything came.
bool readSome(Handle& output, std::string& kept) {
    std::string piece;
    if (!output.isOpen()) return false;
    if (!readAvailable(output.get(), piece)) output.reset();
    kept.append(piece, 0, kOutputKept - std::min(kept.size(), kOutputKept));
    return !piece.empty();
}

ToolRun runOf(DWORD exitCode, std::string output) {
    const auto end = isException(exitCode) ? ToolRun::End::crashed : ToolRun::End::exited;
    return {end, static_cast<int>(exitCode), std::move(output)};
}

std::filesystem::path programOf(const ToolCommand& command) {
    return command.arguments.empty() ? std::filesystem::path() : pathOfNarrow(command.arguments.front());
}

}  // namespace

ToolRun SystemToolRunner::run(const ToolCommand& command) {
    const std::wstring commandLine = pathOfNarrow(command.commandLine).native();
    if (commandLine.size() >= kLongestCommandLine) {
        return notStarted("the command line has " + std::to_string(commandLine.size()) +
                          " characters, and the system takes less than " +
                          std::to_string(kLongestCommandLine) + "; choose a folder with a shorter path");
    }
    PipeEnds pipe;
    Child child;
    try {
        pipe = makePipe();
        const Handle nothing = openNothing();
        child = startChild(commandLine, workingFolder_ ? workingFolder_->c_str() : nullptr,
                           {nothing.get(), pipe.write.get(), pipe.write.get()});
    } catch (const std::system_error& error) {
        const auto code = static_cast<DWORD>(error.code().value());
        return notStarted(systemMessage(code, utf8Path(programOf(command))));
    }
    pipe.write.reset();
    const RunningTool tool(std::move(child.process));

    // Pipes cannot be waited for together with a process. Tools that print are looked at without a pause.
    std::string kept;
    for (bool isPrinting = true;;) {
        const bool hasEnded = tool.hasEnded(isPrinting ? 0 : kTickMilliseconds);
        isPrinting = readSome(pipe.read, kept);
        if (hasEnded && (!isPrinting || kept.size() >= kOutputKept)) return runOf(tool.exitCode(), kept);
        if (whileWaiting_) whileWaiting_();
    }
}

}  // namespace velinor
