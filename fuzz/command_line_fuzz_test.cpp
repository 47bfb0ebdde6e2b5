// The corpus of the command-line fuzz target, as a test of every build.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/command_line_fuzz_body.h"

namespace velinor {
namespace {

TEST(CommandLineFuzz, AcceptsOrRefusesItsCorpus) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_COMMAND_LINE_CORPUS)) {
        SCOPED_TRACE(entry.path().filename());
        std::ifstream file(entry.path(), std::ios::binary);
        EXPECT_NO_THROW(tryCommandLine(std::string(std::istreambuf_iterator<char>(file), {})));
        ++count;
    }
    EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace velinor
