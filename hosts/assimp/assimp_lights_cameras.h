// The lights and cameras of a scene file, and the nodes they belong to.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>

#include "hosts/assimp/assimp_axes.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/import/scene_losses.h"
#include "hosts/snapshot/scene_snapshot.h"

struct aiCamera;
struct aiLight;
struct aiNode;
struct aiScene;

namespace velinor {

// The light or camera of each node that has one.
struct NodeDevices {
    std::unordered_map<const aiNode*, const aiLight*> lights;
    std::unordered_map<const aiNode*, const aiCamera*> cameras;
};

// Finds them. The library ties a light to its node by name only; lights of one name are in the order in which
// their nodes are left (`postOrder`: every child before its parent). Nodes with meshes take neither, and
// empties of FBX only what no other node takes. What finds no node is a loss.
NodeDevices matchDevices(const aiScene& scene, std::span<const aiNode* const> postOrder,
                         const SourceFile& file, SceneLosses& losses);

// The host's state of the light of the node `node`; nothing where the host has no such light. The library's
// colour has the intensity in it: a colour brighter than 1 is divided by its largest channel, since an export
// cuts each channel at 1.
std::optional<host::LightState> lightStateOf(const aiLight& light, std::string_view node,
                                             SceneLosses& losses);

// The host matrix of a light or a camera at a node whose world matrix in the file is `nodeToFile`.
host::GMatrix lightToWorld(const aiLight& light, const ColumnMatrix& nodeToFile, const SpaceRule& rule,
                           FileFormat format);
host::GMatrix cameraToWorld(const aiCamera& camera, const ColumnMatrix& nodeToFile, const SpaceRule& rule,
                            FileFormat format);

}  // namespace velinor
