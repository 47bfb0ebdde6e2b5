#include "platform/tool_runner.h"

#include <cstdio>
#include <string_view>
#include <utility>

namespace velinor {
namespace {

std::string_view withoutLineEnds(std::string_view text) {
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// Numbers of signals are positive. Exceptions of Windows have numbers whose highest bit is set.
std::string causeOf(int code) {
    if (code >= 0) return "signal " + std::to_string(code);
    char text[32];
    std::snprintf(text, sizeof text, "exception 0x%08X", static_cast<unsigned>(code));
    return text;
}

std::string endOf(const ToolRun& run) {
    switch (run.end) {
        case ToolRun::End::exited:
            return "exit status " + std::to_string(run.code);
        case ToolRun::End::crashed:
            return "ended by " + causeOf(run.code);
        case ToolRun::End::notStarted:
            return "not started";
    }
    return {};
}

}  // namespace

std::string describe(const ToolRun& run) {
    const std::string_view output = withoutLineEnds(run.output);
    return output.empty() ? endOf(run) : endOf(run) + ": " + std::string(output);
}

SystemToolRunner::SystemToolRunner(std::optional<std::filesystem::path> workingFolder,
                                   std::function<void()> whileWaiting)
    : workingFolder_(std::move(workingFolder)), whileWaiting_(std::move(whileWaiting)) {}

}  // namespace velinor
