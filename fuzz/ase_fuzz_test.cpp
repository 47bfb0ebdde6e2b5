// The corpus of the fuzz target of ASE files, as a test of every build.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "fuzz/ase_fuzz_body.h"

namespace velinor {
namespace {

// Files whose names begin with "scene" are scenes, the others are refused.
TEST(AseFuzz, HoldsForTheCorpus) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_ASE_CORPUS)) {
        const std::string name = utf8Path(entry.path().filename());
        SCOPED_TRACE(name);
        std::ifstream file(entry.path(), std::ios::binary);
        EXPECT_EQ(fuzzAse(std::string(std::istreambuf_iterator<char>(file), {})), name.starts_with("scene"));
        ++files;
    }
    EXPECT_GE(files, 12);
}

}  // namespace
}  // namespace velinor
