// What the tests of this folder share: scratch files, the model collection, and looks into a snapshot.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "hosts/assimp/assimp_reader.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"
#include "hosts/snapshot/snapshot_test_support.h"
#include "platform/temporary_folder.h"

namespace velinor {

// A folder of its own for each test, removed at its end.
class ScratchFolder : public TemporaryFolder {
  public:
    std::filesystem::path write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path() / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path() / name;
    }
};

// A scene as read, with the notes that came with it.
struct ReadScene : SceneUnderTest {
    ImportNotes notes;

    std::int32_t type(std::u16string_view name) const {
        const SnapshotNode& found = node(name);
        return found.object ? found.object->type : -1;
    }

    bool isNoted(std::string_view subject, std::string_view part) const {
        for (const ImportNote& note : notes.notes()) {
            if (note.subject == subject && note.text.find(part) != std::string::npos) return true;
        }
        return false;
    }
};

inline ReadScene readScene(const std::filesystem::path& file, const AssimpOptions& options = {}) {
    ReadScene read;
    NoProgress progress;
    read.scene = readWithAssimp(file, options, progress, read.notes);
    return read;
}

// What is wrong with a scene, in one line; empty where nothing is.
inline std::string faultOf(const SceneSnapshot& scene) {
    try {
        checkSnapshot(scene, "scene");
    } catch (const SceneError& error) {
        return error.what();
    }
    return {};
}

// The message of the SceneError that reading `file` throws; empty where it throws none.
inline std::string refusal(const std::filesystem::path& file) {
    try {
        readScene(file);
    } catch (const SceneError& error) {
        return error.what();
    }
    return {};
}

inline void expectRow(const host::GMatrix::Row& row, float x, float y, float z, float tolerance) {
    EXPECT_NEAR(row[0], x, tolerance);
    EXPECT_NEAR(row[1], y, tolerance);
    EXPECT_NEAR(row[2], z, tolerance);
}

inline void expectAt(const SnapshotNode& node, float x, float y, float z, float tolerance) {
    SCOPED_TRACE(toUtf8(node.name));
    expectRow(node.worldTransform[3], x, y, z, tolerance);
}

// Whether the node stands in the scene as its object does, moved and scaled by one factor at most.
inline void expectUnrotated(const SnapshotNode& node, float scale = 1) {
    SCOPED_TRACE(toUtf8(node.name));
    expectRow(node.worldTransform[0], scale, 0, 0, 1e-6F);
    expectRow(node.worldTransform[1], 0, scale, 0, 1e-6F);
    expectRow(node.worldTransform[2], 0, 0, scale, 1e-6F);
}

// The model collection of Debian's package assimp-testmodels.
class ModelTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(std::filesystem::is_directory(models()))
            << "the test models are missing in " << models()
            << ": install the package assimp-testmodels, or set "
            << "TOLVEX_TEST_MODELS to their folder";
    }

    static std::filesystem::path models() { return TOLVEX_TEST_MODELS; }
    static ReadScene readModel(const char* name) { return readScene(models() / name); }
};

}  // namespace velinor
