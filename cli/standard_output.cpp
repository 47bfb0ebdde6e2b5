#include "cli/standard_output.h"

#include <cerrno>
#include <system_error>

#include "cli/command_error.h"

namespace velinor {
namespace {

[[noreturn]] void fail(int error) {
    throw CommandError(kFailed, "standard output: write: " + std::generic_category().message(error) +
                                    "; check where the output goes");
}

}  // namespace

void StandardOutput::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) fail(errno);
}

void StandardOutput::finish() {
    if (std::fflush(stdout) != 0) fail(errno);
}

}  // namespace velinor
