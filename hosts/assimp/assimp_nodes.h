// The nodes of a scene file, freed of those that the library or the format's writer added.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hosts/assimp/assimp_axes.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/assimp_lights_cameras.h"

struct aiNode;
struct aiScene;

namespace velinor {

// A node of the scene proper.
struct FileNode {
    const aiNode* node = nullptr;
    std::optional<std::uint32_t> parent;  // an earlier entry of the list; absent: a top-level node
    ColumnMatrix nodeToFile;
    bool isTransformBad = false;  // its own matrix has numbers that are not finite, and is taken for none
};

// All nodes, every child before its parent, children in the order of the file. Throws SceneError where the
// library left a hole in the tree.
std::vector<const aiNode*> nodesInPostOrder(const aiScene& scene, const SourceFile& file);

// The nodes of the scene in the order of the file, parents first. Left out, with their matrices multiplied
// through and their children given to the node above: the root where it stands for the file only, the nodes
// into which the library splits the pivots of FBX, and the empty nodes that it makes for OBJ.
std::vector<FileNode> sceneNodes(const aiScene& scene, const SourceFile& file, const SpaceRule& rule,
                                 const NodeDevices& devices);

// The name of a scene node. A root without a name of its own is called after the file, and so is a mesh of
// STL and its like, which mostly have one mesh and no names.
std::u16string nodeName(const FileNode& node, const SourceFile& file);

}  // namespace velinor
