#include "platform/program_start.h"

namespace velinor {

std::vector<std::string> programArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

StandardStreams::StandardStreams() : restore_([] {}) {}

}  // namespace velinor
