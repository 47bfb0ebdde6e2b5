// Runs what the fuzz targets run over the inputs in tests/corpus: seeds of every member, and what once broke
// a reader.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "fuzz/snapshot_fuzz_body.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Files whose names begin with "scene" are scenes, the others are not.
void checkFolder(const std::string& folder, SnapshotEncoding encoding) {
    int scenes = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(TOLVEX_CORPUS_FOLDER) / folder)) {
        SCOPED_TRACE(entry.path().filename());
        const bool isScene = checkSnapshotInput(contentOf(entry.path()), encoding);
        EXPECT_EQ(isScene, utf8Path(entry.path().filename()).starts_with("scene"));
        scenes += isScene ? 1 : 0;
    }
    EXPECT_GT(scenes, 0);
}

TEST(Corpus, SnapshotJson) {
    checkFolder("snapshot_json", SnapshotEncoding::json);
}

TEST(Corpus, SnapshotCbor) {
    checkFolder("snapshot_cbor", SnapshotEncoding::cbor);
}

}  // namespace
}  // namespace velinor
