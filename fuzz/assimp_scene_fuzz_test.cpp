// The corpus of the fuzz target of the import library's scenes, and a fixed number of others, as a test of
// every build.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "base/text.h"
#include "fuzz/assimp_scene_fuzz_body.h"

namespace velinor {
namespace {

// Files whose names begin with "scene" come to a snapshot, the others are refused.
TEST(AssimpSceneFuzz, HoldsForTheCorpus) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_ASSIMP_SCENE_CORPUS)) {
        const std::string name = utf8Path(entry.path().filename());
        SCOPED_TRACE(name);
        std::ifstream file(entry.path(), std::ios::binary);
        EXPECT_EQ(fuzzAssimpScene(std::string(std::istreambuf_iterator<char>(file), {})),
                  name.starts_with("scene"));
        ++files;
    }
    EXPECT_GE(files, 8);
}

TEST(AssimpSceneFuzz, HoldsForManyScenes) {
    constexpr int kScenes = 3000;
    std::mt19937 random(1);
    int converted = 0;
    for (int i = 0; i < kScenes; ++i) {
        std::string bytes(random() % 1500, '\0');
        for (char& c : bytes)
            c = static_cast<char>(random() & 0xFFU);
        converted += fuzzAssimpScene(bytes) ? 1 : 0;
    }
    EXPECT_GT(converted, kScenes / 10);
    EXPECT_LT(converted, kScenes);
}

}  // namespace
}  // namespace velinor
