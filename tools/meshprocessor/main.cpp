// The program meshprocessor: makes collision shapes of an Ogre XML mesh.
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/isolated_run.h"
#include "platform/program_start.h"
#include "tools/meshprocessor/collision_shapes.h"
#include "tools/meshprocessor/options.h"

namespace velinor {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongArguments = 2;

// A write that the system refuses fails like any other instead of ending the program.
void makeWritesFailQuietly() {
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

std::string countsText(const MeshCounts& counts) {
    return std::to_string(counts.faces) + " faces, " + std::to_string(counts.vertices) + " vertices";
}

std::string reportText(const ProcessorOptions& options, const ProcessorReport& report) {
    std::string text = printable(utf8Path(options.output)) + ": " + countsText(report.input) + " -> " +
                       (report.parts == 1 ? "1 shape" : std::to_string(report.parts) + " shapes") + ", " +
                       countsText(report.output);
    if (report.deviation) {
        char number[64];
        std::snprintf(number, sizeof(number), "%.3g", double{*report.deviation});
        text += "; largest deviation " + std::string(number) + " of the extent";
    }
    return text + '\n';
}

int run(const std::vector<std::string>& arguments) {
    const ProcessorOptions options = parseOptions(arguments);
    const std::string text =
        options.isHelpWanted ? std::string(usage()) : reportText(options, processMesh(options));
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
    return kDone;
}

int fail(int status, const std::string& text) {
    std::fprintf(stderr, "meshprocessor: %s\n", text.c_str());
    return status;
}

int runProgram(const std::vector<std::string>& arguments) {
    try {
        makeWritesFailQuietly();
        return run(arguments);
    } catch (const UsageError& error) {
        fail(kWrongArguments, error.what());
        std::fputs(std::string(usage()).c_str(), stderr);
        return kWrongArguments;
    } catch (const std::bad_alloc&) {
        return fail(kFailed, "not enough memory for this mesh; split it");
    } catch (const std::exception& error) {
        return fail(kFailed, error.what());
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
