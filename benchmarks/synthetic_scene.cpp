#include "benchmarks/synthetic_scene.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "base/text.h"

namespace velinor {
namespace {

constexpr int kGroup = 10;

host::GMatrix randomPlacement(std::mt19937& random) {
    std::uniform_real_distribution<float> coordinate(-1000, 1000);
    std::uniform_real_distribution<float> angle(0, 6.28F);
    std::uniform_real_distribution<float> size(0.5F, 2);
    const float a = angle(random);
    const float b = angle(random);
    const host::GMatrix turned =
        host::GMatrix{
            {std::cos(a), std::sin(a), 0, 0}, {-std::sin(a), std::cos(a), 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}} *
        host::GMatrix{
            {1, 0, 0, 0}, {0, std::cos(b), std::sin(b), 0}, {0, -std::sin(b), std::cos(b), 0}, {0, 0, 0, 1}};
    const float s = size(random);
    host::GMatrix placement = host::GMatrix{{s, 0, 0, 0}, {0, s, 0, 0}, {0, 0, s, 0}, {0, 0, 0, 1}} * turned;
    placement[3] = {coordinate(random), coordinate(random), coordinate(random), 1};
    return placement;
}

SnapshotObject objectOfType(std::int32_t type) {
    SnapshotObject object;
    object.type = type;
    return object;
}

// What node `i` is, apart from its place.
void fillNode(SnapshotNode& node, int i) {
    const std::string number = std::to_string(i);
    if (i % kGroup == 0) {
        node.name = *toUtf16("Group" + number);
        node.object = objectOfType(5);
    } else if (i % (10 * kGroup) == 9) {
        node.name = *toUtf16("Lamp" + number);
        node.object = objectOfType(1);
    } else {
        node.name = *toUtf16("Mesh" + number + (i % 100 == 1 ? " [mass: 2, color: red]" : ""));
        node.object = objectOfType(2);
        node.object->mesh = 0;
    }
}

SnapshotMesh triangle() {
    SnapshotMesh mesh;
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh.faces = {{0, 1, 2}};
    return mesh;
}

}  // namespace

SceneSnapshot syntheticScene(int nodeCount) {
    std::mt19937 random(1);
    SceneSnapshot scene;
    scene.meshes.push_back(triangle());
    scene.nodes.resize(static_cast<std::size_t>(nodeCount));
    for (int i = 0; i < nodeCount; ++i) {
        SnapshotNode& node = scene.nodes[static_cast<std::size_t>(i)];
        fillNode(node, i);
        node.worldTransform = randomPlacement(random);
        const auto ref = static_cast<SnapshotRef>(i);
        const auto group = static_cast<SnapshotRef>(i - i % kGroup);
        if (ref == group) {
            scene.roots.push_back(ref);
        } else {
            scene.nodes[group].children.push_back(ref);
        }
        if (i % kGroup == 5) {
            node.instances = InstanceList({ref, group + 1});
            scene.nodes[group + 1].instances = node.instances;
        }
    }
    return scene;
}

SceneSnapshot syntheticMesh(int triangleCount) {
    const auto side = static_cast<std::uint32_t>(std::ceil(std::sqrt(triangleCount / 2.0)));
    SnapshotMesh mesh;
    SnapshotMapChannel channel;
    for (std::uint32_t y = 0; y <= side; ++y) {
        for (std::uint32_t x = 0; x <= side; ++x) {
            const float u = static_cast<float>(x) / static_cast<float>(side);
            const float v = static_cast<float>(y) / static_cast<float>(side);
            mesh.vertices.push_back({u, v, std::sin(9 * u) * std::cos(7 * v)});
            mesh.specifiedNormals.push_back({0, 0, 1});
            channel.vertices.push_back({u, v, 0});
        }
    }
    for (std::uint32_t y = 0; y < side; ++y) {
        for (std::uint32_t x = 0; x < side; ++x) {
            const std::uint32_t corner = y * (side + 1) + x;
            mesh.faces.push_back({corner, corner + 1, corner + side + 2});
            mesh.faces.push_back({corner, corner + side + 2, corner + side + 1});
        }
    }
    channel.faces = mesh.faces;
    mesh.smoothing.assign(mesh.faces.size(), 1);
    mesh.materialIds.assign(mesh.faces.size(), 0);
    mesh.maps.emplace(1, std::move(channel));

    SceneSnapshot scene;
    scene.meshes.push_back(std::move(mesh));
    SnapshotNode node;
    node.name = u"Grid";
    node.object = objectOfType(2);
    node.object->mesh = 0;
    scene.nodes.push_back(std::move(node));
    scene.roots.push_back(0);
    return scene;
}

}  // namespace velinor
