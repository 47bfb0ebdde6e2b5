// The corpus of the mesh fuzz target, and damage all over it, as a test of every build.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/ogre_mesh_fuzz_body.h"

namespace velinor {
namespace {

TEST(OgreMeshFuzz, HoldsForTheCorpusWithAnyByteChanged) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_OGRE_MESH_CORPUS)) {
        SCOPED_TRACE(entry.path().filename());
        std::ifstream file(entry.path(), std::ios::binary);
        std::string bytes(std::istreambuf_iterator<char>(file), {});
        fuzzOgreMesh(bytes);
        for (char& byte : bytes) {
            for (const int flipped : {0x01, 0x80, 0xFF}) {
                byte = static_cast<char>(byte ^ flipped);
                fuzzOgreMesh(bytes);
                byte = static_cast<char>(byte ^ flipped);
            }
        }
        ++files;
    }
    EXPECT_GE(files, 6);
}

}  // namespace
}  // namespace velinor
