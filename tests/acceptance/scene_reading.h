// Scene files as the command reads them, and looks into what it has read.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/snapshot/snapshot_test_support.h"
#include "platform/temporary_folder.h"

namespace velinor {

// A file of the collection of the Debian package assimp-testmodels. Throws std::runtime_error, which says
// what to install, where it is not there.
std::filesystem::path modelFile(const std::string& name);

// A file beside these tests.
std::filesystem::path acceptanceFile(const std::string& name);

// The content of a file, or "" where there is none.
std::string bytesOf(const std::filesystem::path& file);

// What the command reads of a scene file, by way of a snapshot in JSON.
class SceneReading : public SceneUnderTest {
  public:
    // Fails the test where the command does not end with status 0; the scene is empty then.
    explicit SceneReading(const std::filesystem::path& file, const std::vector<std::string>& options = {});

    const std::string& said() const { return said_; }  // on standard error

    // The name of the node above it; "" at the top level.
    std::u16string parentOf(const SnapshotNode& node) const;
    // How many triangles have a material ID.
    static std::size_t trianglesWithId(const SnapshotMesh& mesh, std::uint16_t id);

    // The value of a material's parameter.
    template <typename Value>
    Value parameter(const SnapshotMaterial& of, std::u16string_view name) const {
        const SnapshotProperty* property = findProperty(of, name);
        const Value* value = property == nullptr ? nullptr : std::get_if<Value>(&property->value);
        if (value == nullptr) complain("parameter", name);
        return value == nullptr ? Value{} : *value;
    }

    // The file that a map shows, as it stands in the scene; of a map around a bitmap that of the bitmap.
    std::u16string bitmap(std::optional<SnapshotRef> map) const;
    std::u16string bitmapOfParameter(const SnapshotMaterial& of, std::u16string_view name) const;
    std::u16string bitmapOfSlot(const SnapshotMaterial& of, std::int32_t slot) const;
    // Where that file is on this disk.
    std::filesystem::path fileOf(std::u16string_view bitmap) const;

  private:
    static const SnapshotProperty* findProperty(const SnapshotMaterial& of, std::u16string_view name);

    TemporaryFolder folder_;
    std::string said_;
};

// A row of a node's matrix.
void expectRow(const SnapshotNode& node, int row, float x, float y, float z, float tolerance = 1e-6F);

// The upper 3x3 part of a node's matrix.
float determinant(const SnapshotNode& node);

}  // namespace velinor
