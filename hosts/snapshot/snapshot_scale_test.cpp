// Large and deep scenes: neither the stack nor the time may grow faster than the file.
#include <gtest/gtest.h>

#include <string>

#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_host.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

constexpr std::size_t kDeep = 1'000'000;
constexpr std::uint32_t kMillion = 1'000'000;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

const std::string kJsonHead = R"({"format": "tolvex-scene", "version": 1, "nodes": [], "roots": [], )";
const std::string kCborHead = std::string(
    "\xBF\x66"
    "format\x6C"
    "tolvex-scene\x67"
    "version\x01\x65"
    "nodes\x80\x65"
    "roots\x80");

TEST(SnapshotScale, PassesOverDeepExtrasInJson) {
    const std::string lists = kJsonHead + "\"extras\": " + repeated("[", kDeep) + repeated("]", kDeep) + "}";
    EXPECT_TRUE(readSnapshot(lists, SnapshotEncoding::json, "s").nodes.empty());
    const std::string objects =
        kJsonHead + "\"extras\": " + repeated("{\"a\":", kDeep) + "1" + repeated("}", kDeep) + "}";
    EXPECT_TRUE(readSnapshot(objects, SnapshotEncoding::json, "s").nodes.empty());
}

TEST(SnapshotScale, PassesOverDeepExtrasInCbor) {
    const std::string name =
        "\x66"
        "extras";
    const std::string definite = kCborHead + name + repeated("\x81", kDeep) + "\x01" + "\xFF";
    EXPECT_TRUE(readSnapshot(definite, SnapshotEncoding::cbor, "s").nodes.empty());
    const std::string open = kCborHead + name +
                             repeated(
                                 "\xBF\x61"
                                 "a",
                                 kDeep) +
                             "\x01" + repeated("\xFF", kDeep) + "\xFF";
    EXPECT_TRUE(readSnapshot(open, SnapshotEncoding::cbor, "s").nodes.empty());
}

TEST(SnapshotScale, RefusesDeepNonsense) {
    const std::string json =
        kJsonHead + "\"materials\": " + repeated("[", kDeep) + repeated("]", kDeep) + "}";
    EXPECT_THROW(readSnapshot(json, SnapshotEncoding::json, "s"), SceneError);
    EXPECT_THROW(readSnapshot(json.substr(0, kDeep / 2), SnapshotEncoding::json, "s"), SceneError);
    const std::string cbor = kCborHead +
                             "\x64"
                             "maps" +
                             repeated("\x81", kDeep) + "\x01" + "\xFF";
    EXPECT_THROW(readSnapshot(cbor, SnapshotEncoding::cbor, "s"), SceneError);
}

TEST(SnapshotScale, TakesAChainOfAHundredThousandNodes) {
    SceneSnapshot scene;
    scene.nodes.resize(100'000);
    scene.roots = {0};
    for (std::uint32_t n = 1; n < scene.nodes.size(); ++n)
        scene.nodes[n - 1].children = {n};
    const std::string text = writeSnapshot(scene, SnapshotEncoding::cbor);
    EXPECT_TRUE(readSnapshot(text, SnapshotEncoding::cbor, "s") == scene);
    scene.roots.clear();
    scene.nodes.back().children = {0};
    EXPECT_THROW(checkSnapshot(scene, "s"), SceneError);
}

TEST(SnapshotScale, TakesAParentOfAMillionChildren) {
    // [1, 2, …], each number with the head of four bytes
    std::string children = std::string("\x9A\x00\x0F\x42\x40", 5);
    for (std::uint32_t n = 1; n <= kMillion; ++n) {
        children += '\x1A';
        for (const unsigned shift : {24U, 16U, 8U, 0U})
            children += static_cast<char>(n >> shift);
    }
    const std::string text =
        "\xA4\x66"
        "format\x6C"
        "tolvex-scene\x67"
        "version\x01\x65"
        "roots\x81" +
        std::string(1, '\0') +
        "\x65"
        "nodes\x9F\xA2\x64"
        "name\x60\x68"
        "children" +
        children +
        repeated(
            "\xA1\x64"
            "name\x60",
            kMillion) +
        "\xFF";
    const SceneSnapshot scene = readSnapshot(text, SnapshotEncoding::cbor, "s");
    const auto host = makeSnapshotHost(scene, "");
    ASSERT_TRUE(host->GetIGameInterface()->InitialiseIGame(false));
    host::IGameNode* root = host->GetIGameInterface()->GetTopLevelNode(0);
    EXPECT_EQ(root->GetChildCount(), 1'000'000);
    EXPECT_EQ(host->GetInstanceMgr()->GetInstances(*root->GetNodeChild(999'999)->GetMaxNode()).Count(), 1);
}

TEST(SnapshotScale, TakesLongNames) {
    SceneSnapshot scene;
    scene.nodes.resize(1);
    scene.nodes[0].name = std::u16string(1 << 20, u'Ж');
    scene.roots = {0};
    for (const auto encoding : {SnapshotEncoding::json, SnapshotEncoding::cbor}) {
        EXPECT_TRUE(readSnapshot(writeSnapshot(scene, encoding), encoding, "s") == scene);
    }
}

}  // namespace
}  // namespace velinor
