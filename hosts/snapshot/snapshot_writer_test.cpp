// What is written, and that it reads back as it was.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"
#include "hosts/snapshot/snapshot_names.h"

namespace velinor {
namespace {

SceneSnapshot reread(const SceneSnapshot& scene, SnapshotEncoding encoding) {
    return readSnapshot(writeSnapshot(scene, encoding), encoding, "scene");
}

void expectRoundTrip(const SceneSnapshot& scene) {
    EXPECT_TRUE(reread(scene, SnapshotEncoding::json) == scene);
    EXPECT_TRUE(reread(scene, SnapshotEncoding::cbor) == scene);
    const std::string json = writeSnapshot(scene, SnapshotEncoding::json);
    EXPECT_EQ(writeSnapshot(reread(scene, SnapshotEncoding::cbor), SnapshotEncoding::json), json);
    EXPECT_EQ(writeSnapshot(reread(scene, SnapshotEncoding::json), SnapshotEncoding::json), json);
}

TEST(WriteSnapshot, WritesReadableJson) {
    SceneSnapshot scene;
    scene.nodes.resize(2);
    scene.nodes[0].name = u"Стол \"A\"";
    scene.nodes[0].children = {1};
    scene.nodes[0].worldTransform[3][0] = 0.1F;
    scene.nodes[1].object = SnapshotObject{.type = 2, .mesh = 0};
    scene.roots = {0};
    scene.meshes.resize(1);
    scene.meshes[0].vertices = {{0, -0.0F, 1e20F}, {1, 2, 3}};
    scene.meshes[0].faces = {{0, 1, 0}};
    EXPECT_EQ(writeSnapshot(scene, SnapshotEncoding::json), R"({
  "format": "tolvex-scene",
  "version": 1,
  "roots": [0],
  "nodes": [
    {
      "name": "Стол \"A\"",
      "children": [1],
      "worldTransform": [
        [1, 0, 0],
        [0, 1, 0],
        [0, 0, 1],
        [0.1, 0, 0]
      ]
    },
    {
      "name": "",
      "object": {
        "type": "mesh",
        "mesh": 0
      }
    }
  ],
  "meshes": [
    {
      "vertices": [0, -0.0, 1e+20, 1, 2, 3],
      "faces": [0, 1, 0]
    }
  ]
}
)");
}

TEST(WriteSnapshot, WritesAnEmptyScene) {
    EXPECT_EQ(
        writeSnapshot({}, SnapshotEncoding::json),
        "{\n  \"format\": \"tolvex-scene\",\n  \"version\": 1,\n  \"roots\": [],\n  \"nodes\": []\n}\n");
    expectRoundTrip({});
}

TEST(WriteSnapshot, WritesTypedArraysInCbor) {
    SceneSnapshot scene;
    scene.meshes.resize(1);
    scene.meshes[0].vertices = {{0, 1, 2}};
    const std::string text = writeSnapshot(scene, SnapshotEncoding::cbor);
    EXPECT_NE(text.find(std::string("\x68vertices\xD8\x55\x4C\0\0\0\0\0\0\x80\x3F\0\0\0\x40", 24)),
              std::string::npos);
    EXPECT_NE(text.find("\x65"
                        "faces\xD8\x46\x40"),
              std::string::npos);
}

TEST(WriteSnapshot, KeepsEveryFloatInJson) {
    SceneSnapshot scene;
    scene.materials.resize(1);
    const auto keeps = [&](float value) {
        scene.materials[0].opacity = value;
        const float read = reread(scene, SnapshotEncoding::json).materials[0].opacity;
        EXPECT_EQ(read, value);
        EXPECT_EQ(std::signbit(read), std::signbit(value)) << value;
    };
    using Limits = std::numeric_limits<float>;
    for (const float value : {0.0F, -0.0F, 0.1F, 7.038531e-26F, 16777216.0F, 1e10F, Limits::max(),
                              Limits::lowest(), Limits::min(), Limits::denorm_min(), 1 / 3.0F}) {
        keeps(value);
    }
    std::mt19937 random(20);
    for (int i = 0; i < 2000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        if (std::isfinite(std::bit_cast<float>(bits))) keeps(std::bit_cast<float>(bits));
    }
}

TEST(WriteSnapshot, WritesInfinitiesAsNumbersThatAreReadAsInfinite) {
    SceneSnapshot scene;
    scene.nodes.resize(1);
    scene.roots = {0};
    scene.nodes[0].worldTransform[3] = {INFINITY, -INFINITY, std::numeric_limits<float>::max(), 1};
    for (const SnapshotEncoding encoding : {SnapshotEncoding::json, SnapshotEncoding::cbor}) {
        EXPECT_EQ(reread(scene, encoding), scene);
    }
    EXPECT_NE(writeSnapshot(scene, SnapshotEncoding::json).find("[1e39, -1e39, 3.4028235e+38]"),
              std::string::npos);
}

TEST(WriteSnapshot, RefusesInJsonWhatOnlyCborHolds) {
    SceneSnapshot scene;
    scene.nodes.resize(1);
    scene.roots = {0};
    scene.nodes[0].object = SnapshotObject{.type = 5, .parameters = {{u"a/b", NAN}}};
    try {
        writeSnapshot(scene, SnapshotEncoding::json);
        FAIL() << "written";
    } catch (const SceneError& error) {
        EXPECT_STREQ(
            error.what(),
            "scene: /nodes/0/object/parameters/a~1b: nan cannot be written in JSON; save the scene as CBOR "
            "(.scene.cbor)");
    }
}

TEST(WriteSnapshot, ReplacesUnpairedSurrogates) {
    SceneSnapshot scene;
    scene.nodes.resize(1);
    scene.roots = {0};
    scene.nodes[0].name = {u'a', 0xD800, u'b'};
    scene.nodes[0].userProperties = {{std::u16string{0xD800}, 1}, {std::u16string{0xDC00}, 2}};
    for (const auto encoding : {SnapshotEncoding::json, SnapshotEncoding::cbor}) {
        const SceneSnapshot read = reread(scene, encoding);
        EXPECT_EQ(read.nodes[0].name, (std::u16string{u'a', 0xFFFD, u'b'}));
        EXPECT_EQ(read.nodes[0].userProperties, (std::map<std::u16string, std::int32_t>{{u"\xFFFD", 1}}));
    }
}

TEST(WriteSnapshot, KeepsWhatIsGivenThoughItIsTheDefault) {
    SceneSnapshot scene;
    scene.nodes.resize(2);
    scene.roots = {0, 1};
    scene.nodes[0].instances = InstanceList({});
    scene.nodes[0].object = SnapshotObject{.type = 1, .light = host::LightState{}};
    scene.nodes[1].object =
        SnapshotObject{.type = 2, .boundingBox = host::Box3{{}, {}}, .mesh = 0, .faceCount = 1};
    scene.meshes.resize(1);
    scene.meshes[0].vertices.resize(1);
    scene.meshes[0].faces.resize(1);
    scene.meshes[0].smoothing = {0};
    scene.meshes[0].materialIds = {0};
    scene.meshes[0].activeMaterialIds.emplace();
    scene.meshes[0].mapChannels = 2;
    scene.meshes[0].renderVertices = {std::nullopt};
    expectRoundTrip(scene);
}

TEST(WriteSnapshot, ChecksTheScene) {
    SceneSnapshot scene;
    scene.roots = {1};
    EXPECT_THROW(writeSnapshot(scene, SnapshotEncoding::cbor), SceneError);
}

// Scenes of every member, drawn from a seed.
class RandomScene {
  public:
    explicit RandomScene(unsigned seed) : random_(seed) {}

    SceneSnapshot make() {
        scene_.animationStart = static_cast<std::int32_t>(random_());
        fill(scene_.assetFolders, [this] { return text(); });
        scene_.meshes.resize(1 + below(3));
        scene_.materials.resize(1 + below(4));
        scene_.maps.resize(1 + below(4));
        scene_.nodes.resize(1 + below(12));
        for (auto& mesh : scene_.meshes)
            fillMesh(mesh);
        for (auto& material : scene_.materials)
            fillMaterial(material);
        for (auto& map : scene_.maps) {
            map = {text(), text(), {}};
            fill(map.subMaps, [this] { return optionalRef(scene_.maps.size()); });
        }
        for (std::uint32_t n = 0; n < scene_.nodes.size(); ++n) {
            fillNode(scene_.nodes[n]);
            (n == 0 || coin() ? scene_.roots : scene_.nodes[below(n)].children).push_back(n);
        }
        return std::move(scene_);
    }

  private:
    std::uint32_t below(std::size_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool coin() { return below(2) == 0; }

    float real() {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random_()));
        return coin() || !std::isfinite(value) ? static_cast<float>(below(100)) / 10 : value;
    }

    host::Point3 point() { return {real(), real(), real()}; }

    std::u16string text() {
        static const std::u16string kLetters = u"aZ09 /~\"\\\n[]:,Ж椅\u0001\u007f";
        std::u16string result;
        for (std::uint32_t i = below(8); i > 0; --i)
            result += kLetters[below(kLetters.size())];
        if (below(5) == 0) result += u"\U0001F600";
        return result;
    }

    std::optional<SnapshotRef> optionalRef(std::size_t count) {
        return coin() ? std::optional<SnapshotRef>(below(count)) : std::nullopt;
    }

    template <class Items, class Make>
    void fill(Items& items, Make make, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            items.push_back(make());
    }
    template <class Items, class Make>
    void fill(Items& items, Make make) {
        fill(items, make, below(4));
    }

    void fillNode(SnapshotNode& node) {
        node.name = text();
        node.hidden = coin();
        node.layerHidden = coin();
        node.selected = coin();
        if (coin()) {
            for (int row = 0; row < 4; ++row) {
                for (std::size_t c = 0; c < 3; ++c)
                    node.worldTransform[row][c] = real();
            }
        }
        if (coin()) {
            std::vector<SnapshotRef> refs;
            fill(refs, [this] { return below(scene_.nodes.size()); });
            node.instances = InstanceList(refs);
        }
        for (std::uint32_t i = below(3); i > 0; --i)
            node.userProperties[text()] = static_cast<int>(random_());
        node.material = optionalRef(scene_.materials.size());
        if (coin()) fillObject(node.object.emplace());
    }

    void fillObject(SnapshotObject& object) {
        object.type = static_cast<std::int32_t>(below(9)) - 1;
        object.className = text();
        if (coin()) object.boundingBox = host::Box3{point(), point()};
        if (object.type == 2) object.mesh = below(scene_.meshes.size());
        if (coin()) object.faceCount = static_cast<std::int32_t>(random_());
        if (object.type == 1 && coin()) object.light = {static_cast<std::int32_t>(below(5)), point(), real()};
        for (std::uint32_t i = below(3); i > 0; --i)
            object.parameters[text()] = real();
    }

    FaceIndices face(std::size_t vertices) { return {below(vertices), below(vertices), below(vertices)}; }

    void fillMesh(SnapshotMesh& mesh) {
        const std::size_t vertices = 1 + below(6);
        const std::size_t faces = below(6);
        fill(
            mesh.vertices, [this] { return point(); }, vertices);
        fill(
            mesh.faces, [&] { return face(vertices); }, faces);
        if (coin())
            fill(
                mesh.smoothing, [this] { return static_cast<std::uint32_t>(random_()); }, faces);
        if (coin())
            fill(
                mesh.materialIds, [this] { return static_cast<std::uint16_t>(random_()); }, faces);
        if (coin()) fill(mesh.activeMaterialIds.emplace(), [this] { return static_cast<int>(random_()); });
        if (coin()) mesh.mapChannels = static_cast<std::int32_t>(below(10));
        for (std::uint32_t i = below(3); i > 0; --i) {
            SnapshotMapChannel& channel = mesh.maps[static_cast<std::int32_t>(below(100))];
            channel = {};
            fill(
                channel.vertices, [this] { return point(); }, 1 + below(4));
            if (coin())
                fill(
                    channel.faces, [&] { return face(channel.vertices.size()); }, faces);
        }
        if (coin())
            fill(
                mesh.specifiedNormals, [this] { return point(); }, vertices);
        if (coin())
            fill(
                mesh.renderVertices, [this] { return renderVertex(); }, vertices);
    }

    std::optional<SnapshotRenderVertex> renderVertex() {
        if (below(3) == 0) return std::nullopt;
        if (coin()) return point();
        std::vector<host::RNormal> normals;
        fill(normals, [this] { return host::RNormal{point(), static_cast<std::uint32_t>(random_())}; });
        return normals;
    }

    void fillMaterial(SnapshotMaterial& material) {
        material.className = coin() ? u"Standard" : text();
        material.name = text();
        fill(material.subMaterials, [this] {
            return SnapshotSubMaterial{static_cast<std::int32_t>(random_()),
                                       optionalRef(scene_.materials.size())};
        });
        fill(material.properties, [this] { return property(); });
        material.diffuse = point();
        material.opacity = real();
        material.glossiness = real();
        if (coin()) material.specular = real();
        if (below(3) == 0) material.specular = point();
        fill(material.textureMaps, [this] {
            return SnapshotTextureMap{static_cast<std::int32_t>(random_()), below(scene_.maps.size())};
        });
    }

    SnapshotProperty property() {
        switch (below(5)) {
            case 0:
                return {text(), real()};
            case 1:
                return {text(), point()};
            case 2:
                return {text(), host::Point4{real(), real(), real(), real()}};
            case 3:
                return {text(), text()};
            default:
                return {text(), SnapshotMapProperty{optionalRef(scene_.maps.size())}};
        }
    }

    std::mt19937 random_;
    SceneSnapshot scene_;
};

TEST(WriteSnapshot, RandomScenesComeBackEqual) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        expectRoundTrip(RandomScene(seed).make());
    }
}

}  // namespace
}  // namespace velinor
