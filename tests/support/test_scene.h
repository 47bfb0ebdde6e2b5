// Scenes written in code, and their collection, for unit tests.
#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/progress.h"
#include "base/report.h"
#include "base/text.h"
#include "host/core.h"
#include "hosts/snapshot/scene_snapshot.h"
#include "hosts/snapshot/snapshot_host.h"
#include "plugin/export_settings.h"
#include "scene/collected_scene.h"
#include "scene/name_patterns.h"
#include "scene/scene_collection.h"

namespace velinor {

// The matrix that moves by (x, y, z).
inline host::GMatrix translation(float x, float y, float z) {
    return {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}};
}

// A scene that grows node by node.
class TestScene {
  public:
    using Parent = std::optional<SnapshotRef>;

    // Adds a node at the top level or below `parent`.
    SnapshotRef add(std::u16string name, std::optional<SnapshotObject> object, Parent parent = std::nullopt) {
        const auto ref = static_cast<SnapshotRef>(value.nodes.size());
        SnapshotNode node;
        node.name = std::move(name);
        node.object = std::move(object);
        value.nodes.push_back(std::move(node));
        (parent ? value.nodes[*parent].children : value.roots).push_back(ref);
        return ref;
    }

    SnapshotRef addHelper(std::u16string name, Parent parent = std::nullopt) {
        return add(std::move(name), ofType(5), parent);
    }
    SnapshotRef addCamera(std::u16string name, Parent parent = std::nullopt) {
        return add(std::move(name), ofType(4), parent);
    }
    SnapshotRef addSpline(std::u16string name, Parent parent = std::nullopt) {
        return add(std::move(name), ofType(3), parent);
    }

    // A flat mesh of `width` by `height` in the x-y plane of its own space, from the origin.
    SnapshotRef addMesh(std::u16string name, Parent parent = std::nullopt, float width = 1,
                        float height = 1) {
        SnapshotMesh mesh;
        mesh.vertices = {{0, 0, 0}, {width, 0, 0}, {width, height, 0}, {0, height, 0}};
        mesh.faces = {{0, 1, 2}, {0, 2, 3}};
        SnapshotObject object = ofType(2);
        object.mesh = static_cast<SnapshotRef>(value.meshes.size());
        value.meshes.push_back(std::move(mesh));
        return add(std::move(name), std::move(object), parent);
    }

    SnapshotRef addLight(std::u16string name, host::LightState state, Parent parent = std::nullopt) {
        SnapshotObject object = ofType(1);
        object.light = state;
        return add(std::move(name), std::move(object), parent);
    }

    SnapshotNode& operator[](SnapshotRef node) { return value.nodes[node]; }

    static SnapshotObject ofType(std::int32_t type) {
        SnapshotObject object;
        object.type = type;
        return object;
    }

    std::unique_ptr<host::Host> makeHost() const { return makeSnapshotHost(value, {}); }

    SceneSnapshot value;
};

// The collection of a scene with everything around it.
class TestCollection {
  public:
    explicit TestCollection(const TestScene& testScene) : host(testScene.makeHost()) {}

    // Collects, with the settings as they are then.
    bool run() {
        host::IGameScene& igame = *host->GetIGameInterface();
        igame.InitialiseIGame(false);
        return collectScene({*host->GetInstanceMgr(), settings, patterns, scene, report, progress}, igame);
    }

    // The tree on one line, e.g. "A(B C(D))".
    std::string tree() const { return outline(scene.rootRecord); }

    // The names of a list's nodes, separated by blanks.
    static std::string names(const NodeList& nodes) {
        std::string text;
        for (host::IGameNode* node : nodes)
            text += (text.empty() ? "" : " ") + toUtf8(node->GetName());
        return text;
    }

    // What the report says of each node: "code subject", in order.
    std::vector<std::string> told() const {
        std::vector<std::string> lines;
        for (const ReportEntry& entry : report.entries()) {
            lines.push_back(std::string(message(entry.id).code) + " " + entry.subject);
        }
        return lines;
    }

    std::unique_ptr<host::Host> host;
    ExportSettings settings;
    NamePatterns patterns;
    Report report;
    NoProgress progress;
    CollectedScene scene;

  private:
    static std::string outline(const SceneNodeRecord& record) {
        std::string text;
        for (const SceneNodeRecord& child : record.children) {
            text += (text.empty() ? "" : " ") + toUtf8(child.node->GetName());
            if (!child.children.empty()) text += "(" + outline(child) + ")";
        }
        return text;
    }
};

}  // namespace velinor
