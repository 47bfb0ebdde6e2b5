// Looks into a scene for tests. One that asks for what the scene does not have fails.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

struct SceneUnderTest {
    SceneSnapshot scene;

    // The node of that name; of several the one with `place` others before it.
    const SnapshotNode& node(std::u16string_view name, int place = 0) const {
        for (const SnapshotNode& node : scene.nodes) {
            if (node.name == name && place-- == 0) return node;
        }
        return noSuch<SnapshotNode>("node", name);
    }

    // How many nodes have an object of this type (host::IGameObject).
    std::size_t countOfType(std::int32_t type) const {
        return static_cast<std::size_t>(std::ranges::count_if(scene.nodes, [type](const SnapshotNode& node) {
            return node.object && node.object->type == type;
        }));
    }

    const SnapshotMesh& meshOf(const SnapshotNode& node) const {
        if (node.object && node.object->mesh) return scene.meshes.at(*node.object->mesh);
        return noSuch<SnapshotMesh>("mesh of node", node.name);
    }

    // Of all meshes.
    std::size_t triangles() const {
        std::size_t count = 0;
        for (const SnapshotMesh& mesh : scene.meshes)
            count += mesh.faces.size();
        return count;
    }

    const SnapshotMaterial& material(std::u16string_view name) const {
        const auto found = std::ranges::find(scene.materials, name, &SnapshotMaterial::name);
        if (found != scene.materials.end()) return *found;
        return noSuch<SnapshotMaterial>("material", name);
    }

    const SnapshotMaterial& materialOf(const SnapshotNode& node) const {
        if (node.material) return scene.materials.at(*node.material);
        return noSuch<SnapshotMaterial>("material of node", node.name);
    }

  protected:
    static void complain(const char* what, std::u16string_view name) {
        ADD_FAILURE() << "no such " << what << ": " << toUtf8(name);
    }

  private:
    template <typename Item>
    static const Item& noSuch(const char* what, std::u16string_view name) {
        complain(what, name);
        static const Item none;
        return none;
    }
};

}  // namespace velinor
