// The program tolvex: one command, its exit status, one line for whatever ends it early.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/interrupts.h"
#include "cli/options.h"
#include "cli/standard_output.h"
#include "platform/isolated_run.h"
#include "platform/program_start.h"

namespace velinor {
namespace {

struct RunCommand {
    ExitStatus operator()(const ShowText& show) const {
        StandardOutput output;
        output.write(show.text);
        output.finish();
        return kDone;
    }
    ExitStatus operator()(const ExportArguments& arguments) const { return runExport(arguments); }
    ExitStatus operator()(const InspectArguments& arguments) const { return runInspect(arguments); }
    ExitStatus operator()(const SnapshotArguments& arguments) const { return runSnapshot(arguments); }
    ExitStatus operator()(const CheckArguments& arguments) const { return runCheck(arguments); }
    ExitStatus operator()(const FormatsArguments& arguments) const { return runFormats(arguments); }
};

// The exit status of the whole program.
int runProgram(const std::vector<std::string>& arguments) {
    try {
        makeWritesFailQuietly();
        return std::visit(RunCommand(), parseCommandLine(arguments));
    } catch (const std::exception& error) {
        const Failure failure = failureOf(error);
        std::fprintf(stderr, "tolvex: %s\n", printable(failure.text).c_str());
        return failure.status;
    }
}

}  // namespace
}  // namespace velinor

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = velinor::programArguments(argc, argv);
    velinor::runIsolatedWorkIfAsked(arguments);
    const velinor::StandardStreams streams;
    return velinor::runProgram(arguments);
}
