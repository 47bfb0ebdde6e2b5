// The meshes of a scene file: one host mesh for each list of library meshes that nodes hold.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "hosts/assimp/assimp_nodes.h"

struct aiScene;

namespace velinor {

// What the meshes of a node come to. Nodes with equal lists of library meshes share one.
struct MeshList {
    std::optional<SnapshotRef> mesh;  // absent: no triangle among them
    bool hasLinesOrPoints = false;    // without triangles
    host::Box3 linesBox;              // object space, of the points and lines where there is no triangle
    std::vector<unsigned> materials;  // library material by material ID of the mesh, in order of first use
    std::vector<std::uint32_t> instances;  // the nodes that hold the list, in order
};

struct ConvertedMeshes {
    std::vector<SnapshotMesh> meshes;
    std::vector<MeshList> lists;  // in order of their first nodes
    std::vector<std::optional<std::uint32_t>>
        listOfNode;  // for each node its entry of `lists`; absent: no meshes
};

// Converts the meshes of all `nodes`. Every library mesh is freed after its last use, so that a large scene
// is not held twice: `scene.mMeshes` holds null pointers afterwards. What is left out is a loss of the first
// node that holds the list. Throws SceneError where a node holds a mesh that does not exist.
ConvertedMeshes convertMeshes(aiScene& scene, std::span<const FileNode> nodes, const SourceFile& file,
                              const SpaceRule& rule, Progress& progress, SceneLosses& losses);

}  // namespace velinor
