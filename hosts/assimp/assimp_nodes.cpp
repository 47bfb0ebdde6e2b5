#include "hosts/assimp/assimp_nodes.h"

#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_metadata.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

bool hasContent(const aiNode& node, const NodeDevices& devices) {
    return node.mNumMeshes != 0 || devices.lights.contains(&node) || devices.cameras.contains(&node);
}

// Names that the library gives to roots: none, one in angle brackets, those of X and CSM, or (X3D) the file's
// path.
bool isInventedRootName(std::string_view name, const SourceFile& file) {
    constexpr std::string_view kNames[] = {"", "$dummy_root", "$dummy_node", "$CSM_DummyRoot"};
    return std::ranges::find(kNames, name) != std::end(kNames) ||
           (name.starts_with('<') && name.ends_with('>')) || name == utf8Path(file.path);
}

bool isRootOfFileOnly(const aiNode& root, const SourceFile& file) {
    const std::string_view name = textOf(root.mName);
    switch (file.format) {
        case FileFormat::fbx:
        case FileFormat::collada:
        case FileFormat::obj:
        case FileFormat::threeDs:
            return true;
        case FileFormat::gltf:
            return name == "ROOT";
        default:
            return isInventedRootName(name, file);
    }
}

// One of the nodes into which the library splits the transform of an FBX node. Where their names would be too
// long they have none; nodes of the file have metadata at least.
bool isPivot(const aiNode& node) {
    const std::string_view name = textOf(node.mName);
    if (name.empty()) return node.mMetaData == nullptr && node.mParent != nullptr && node.mNumMeshes == 0;
    return name.find("_$AssimpFbx$_") != std::string_view::npos;
}

bool isLeftOut(const aiNode& node, const SourceFile& file, const NodeDevices& devices) {
    if (file.format == FileFormat::fbx && isPivot(node)) return true;
    if (hasContent(node, devices)) return false;
    if (node.mParent == nullptr) return isRootOfFileOnly(node, file);
    return file.format == FileFormat::obj;  // an "o" that a "g" follows
}

ColumnMatrix matrixOf(const aiMatrix4x4& m) {
    return {m.a1, m.a2, m.a3, m.a4, m.b1, m.b2, m.b3, m.b4, m.c1, m.c2, m.c3, m.c4, m.d1, m.d2, m.d3, m.d4};
}

bool isFinite(const aiMatrix4x4& m) {
    return std::all_of(&m.a1, &m.a1 + 16, [](float entry) { return std::isfinite(entry); });
}

// The name that the file has for the node. COLLADA's nodes may have an ID alone, which the library replaces.
aiString fileName(const aiNode& node, FileFormat format) {
    if (format != FileFormat::collada || !textOf(node.mName).starts_with("$ColladaAutoName$_"))
        return node.mName;
    return metadataValue<aiString>(node.mMetaData, "Collada_id").value_or(node.mName);
}

struct Visit {
    const aiNode* node = nullptr;
    std::optional<std::uint32_t> parent;
    ColumnMatrix parentToFile;
};

}  // namespace

std::vector<const aiNode*> nodesInPostOrder(const aiScene& scene, const SourceFile& file) {
    // Parents first and children from the last to the first, turned round.
    std::vector<const aiNode*> order;
    std::vector<const aiNode*> open{scene.mRootNode};
    while (!open.empty()) {
        const aiNode* node = open.back();
        open.pop_back();
        if (node == nullptr || (node->mNumChildren != 0 && node->mChildren == nullptr)) {
            throw SceneError(file.shown + ": cannot be read: the file's node tree has a hole");
        }
        order.push_back(node);
        open.insert(open.end(), node->mChildren, node->mChildren + node->mNumChildren);
    }
    std::ranges::reverse(order);
    return order;
}

std::vector<FileNode> sceneNodes(const aiScene& scene, const SourceFile& file, const SpaceRule& rule,
                                 const NodeDevices& devices) {
    std::vector<FileNode> nodes;
    std::vector<Visit> open{{scene.mRootNode, std::nullopt, {}}};
    while (!open.empty()) {
        Visit visit = open.back();
        open.pop_back();
        const aiNode& node = *visit.node;
        const bool isMatrixDropped = node.mParent == nullptr && rule.dropsRootMatrix;
        const bool isBad = !isMatrixDropped && !isFinite(node.mTransformation);
        const ColumnMatrix nodeToFile = isMatrixDropped || isBad
                                            ? visit.parentToFile
                                            : visit.parentToFile * matrixOf(node.mTransformation);
        if (!isLeftOut(node, file, devices)) {
            nodes.push_back({&node, visit.parent, nodeToFile, isBad});
            visit.parent = static_cast<std::uint32_t>(nodes.size() - 1);
        }
        for (unsigned i = node.mNumChildren; i > 0; --i)
            open.push_back({node.mChildren[i - 1], visit.parent, nodeToFile});
    }
    return nodes;
}

std::u16string nodeName(const FileNode& node, const SourceFile& file) {
    const aiString name = fileName(*node.node, file.format);
    const bool standsForFile = node.node->mParent == nullptr || file.format == FileFormat::upright;
    if (standsForFile && isInventedRootName(textOf(name), file)) return toUtf16Lossy(file.stem);
    if (!file.isAsciiFbx) return hostName(name);
    return hostName(aiString(decodeFbxEntities(textOf(name))));
}

}  // namespace velinor
