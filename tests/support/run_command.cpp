#include "tests/support/run_command.h"

#include <fstream>
#include <sstream>

namespace velinor {

std::string installedFile(const std::string& name) {
    const auto folder = std::filesystem::path(TOLVEX_PROGRAM).parent_path() / "Plugins/tolvex";
    std::ifstream stream(folder / name, std::ios::binary);
    return (std::ostringstream() << stream.rdbuf()).str();
}

CommandResult runTolvex(const std::vector<std::string>& arguments, const CommandInput& input) {
    return runProgram(TOLVEX_PROGRAM, arguments, input);
}

}  // namespace velinor
