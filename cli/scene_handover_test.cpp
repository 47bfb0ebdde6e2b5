#include "cli/scene_handover.h"

#include <gtest/gtest.h>

#include "cli/sized_text.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

// Top-level helpers.
SceneSnapshot sceneOf(std::size_t nodes) {
    SceneSnapshot scene;
    for (std::size_t i = 0; i < nodes; ++i) {
        scene.nodes.push_back({.name = u"N" + std::u16string(1, static_cast<char16_t>(u'a' + i % 26))});
        scene.roots.push_back(static_cast<SnapshotRef>(i));
    }
    return scene;
}

TEST(SceneHandover, KeepsTheSceneWithItsInstances) {
    SceneSnapshot scene = sceneOf(6);
    const InstanceList group({2, 4, 1});
    for (const SnapshotRef node : {1U, 2U, 4U})
        scene.nodes[node].instances = group;
    scene.nodes[5].instances = InstanceList({});
    const SceneSnapshot read = unpackedScene(packedScene(scene), "scene");
    EXPECT_TRUE(read == scene);
    EXPECT_EQ(&read.nodes[1].instances->nodes(), &read.nodes[4].instances->nodes()) << "shared";
    EXPECT_FALSE(read.nodes[0].instances);
}

TEST(SceneHandover, TakesSpaceInProportionToTheInstances) {
    constexpr std::size_t kCount = 2000;
    SceneSnapshot scene = sceneOf(kCount);
    std::vector<SnapshotRef> all(scene.roots.begin(), scene.roots.end());
    const InstanceList group(std::move(all));
    for (SnapshotNode& node : scene.nodes)
        node.instances = group;
    const std::string packed = packedScene(scene);
    EXPECT_LT(packed.size(), 100 * kCount);
    EXPECT_TRUE(unpackedScene(packed, "scene") == scene);
}

// What a process may send whose memory a damaged file has spoilt.
TEST(SceneHandover, RefusesNodesThatAreNotThere) {
    const std::string cbor = writeSnapshot(sceneOf(2), SnapshotEncoding::cbor);
    for (const char* groups : {"1\n2\n1\n0\n", "1\n0\n1\n2\n", "3\n0\n1\n", "18446744073709551615\n0\n"}) {
        std::string bytes;
        appendText(bytes, groups);
        EXPECT_THROW(unpackedScene(bytes + cbor, "scene"), SceneError) << groups;
    }
    EXPECT_TRUE(unpackedScene("1\nx" + cbor, "scene") == sceneOf(2)) << "no number, no instances";
    EXPECT_THROW(unpackedScene("", "scene"), SceneError);
    EXPECT_THROW(unpackedScene("99\n", "scene"), SceneError);
}

}  // namespace
}  // namespace velinor
