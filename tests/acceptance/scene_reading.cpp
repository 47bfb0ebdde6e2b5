#include "tests/acceptance/scene_reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "base/text.h"
#include "hosts/snapshot/snapshot_io.h"
#include "tests/support/run_command.h"

namespace velinor {

namespace fs = std::filesystem;

fs::path modelFile(const std::string& name) {
    const fs::path file = fs::path(TOLVEX_TEST_MODELS) / name;
    if (!fs::exists(file)) {
        throw std::runtime_error(utf8Path(file) +
                                 " is missing: install the package assimp-testmodels, or set "
                                 "TOLVEX_TEST_MODELS to its folder of models");
    }
    return file;
}

fs::path acceptanceFile(const std::string& name) {
    return fs::path(TOLVEX_ACCEPTANCE_FOLDER) / name;
}

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return std::move(bytes).str();
}

SceneReading::SceneReading(const fs::path& file, const std::vector<std::string>& options) {
    const fs::path snapshot = folder_.path() / "read.scene.json";
    std::vector<std::string> arguments{"snapshot"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), {utf8Path(file), utf8Path(snapshot)});
    const CommandResult result = runTolvex(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    said_ = result.err;
    if (result.status == 0) scene = readSnapshot(bytesOf(snapshot), SnapshotEncoding::json, utf8Path(file));
}

std::u16string SceneReading::parentOf(const SnapshotNode& node) const {
    const auto reference = static_cast<SnapshotRef>(&node - scene.nodes.data());
    for (const SnapshotNode& parent : scene.nodes) {
        if (std::ranges::find(parent.children, reference) != parent.children.end()) return parent.name;
    }
    return {};
}

std::size_t SceneReading::trianglesWithId(const SnapshotMesh& mesh, std::uint16_t id) {
    return static_cast<std::size_t>(std::ranges::count(mesh.materialIds, id));
}

std::u16string SceneReading::bitmap(std::optional<SnapshotRef> map) const {
    while (map && !scene.maps.at(*map).subMaps.empty())
        map = scene.maps[*map].subMaps.front();
    return map ? scene.maps.at(*map).bitmap : u"";
}

std::u16string SceneReading::bitmapOfParameter(const SnapshotMaterial& of, std::u16string_view name) const {
    return bitmap(parameter<SnapshotMapProperty>(of, name).map);
}

std::u16string SceneReading::bitmapOfSlot(const SnapshotMaterial& of, std::int32_t slot) const {
    const auto found = std::ranges::find(of.textureMaps, slot, &SnapshotTextureMap::slot);
    if (found != of.textureMaps.end()) return bitmap(found->map);
    complain("map of that slot of material", of.name);
    return {};
}

fs::path SceneReading::fileOf(std::u16string_view bitmap) const {
    return folder_.path() / pathOfUtf8(toUtf8(bitmap));
}

const SnapshotProperty* SceneReading::findProperty(const SnapshotMaterial& of, std::u16string_view name) {
    const auto found = std::ranges::find(of.properties, name, &SnapshotProperty::name);
    return found == of.properties.end() ? nullptr : &*found;
}

void expectRow(const SnapshotNode& node, int row, float x, float y, float z, float tolerance) {
    SCOPED_TRACE(toUtf8(node.name) + ", row " + std::to_string(row));
    EXPECT_NEAR(node.worldTransform[row][0], x, tolerance);
    EXPECT_NEAR(node.worldTransform[row][1], y, tolerance);
    EXPECT_NEAR(node.worldTransform[row][2], z, tolerance);
}

float determinant(const SnapshotNode& node) {
    const host::GMatrix& m = node.worldTransform;
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

}  // namespace velinor
