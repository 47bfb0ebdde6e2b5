// The corpus of the fuzz target of package texts, as a test of every build.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/package_text_fuzz_body.h"

namespace velinor {
namespace {

TEST(PackageTextFuzz, HoldsForTheCorpus) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_PACKAGE_TEXT_CORPUS)) {
        SCOPED_TRACE(entry.path().filename());
        std::ifstream file(entry.path(), std::ios::binary);
        fuzzPackageText(std::string(std::istreambuf_iterator<char>(file), {}));
        ++files;
    }
    EXPECT_GE(files, 5);
}

}  // namespace
}  // namespace velinor
