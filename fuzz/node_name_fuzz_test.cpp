#include "fuzz/node_name_fuzz_body.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace velinor {
namespace {

TEST(NodeNameFuzz, HoldsForTheCorpus) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_CORPUS_FOLDER "/node_name")) {
        std::ifstream file(entry.path(), std::ios::binary);
        fuzzNodeName(std::string(std::istreambuf_iterator<char>(file), {}));
        ++files;
    }
    EXPECT_GE(files, 10);
}

}  // namespace
}  // namespace velinor
