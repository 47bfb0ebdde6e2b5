#include "hosts/assimp/assimp_conversion.h"

#include <assimp/scene.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "hosts/assimp/assimp_axes.h"
#include "hosts/assimp/assimp_lights_cameras.h"
#include "hosts/assimp/assimp_materials.h"
#include "hosts/assimp/assimp_meshes.h"
#include "hosts/assimp/assimp_metadata.h"
#include "hosts/assimp/assimp_nodes.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/import/scene_losses.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

void refuseEmpty(const aiScene& scene, const SourceFile& file) {
    if (scene.mRootNode == nullptr)
        throw SceneError(file.shown + ": cannot be read: no scene was found in it");
    const bool hasMeshes = scene.mNumMeshes != 0 && scene.mMeshes != nullptr;
    if (hasMeshes || scene.mNumLights != 0 || scene.mNumCameras != 0) return;
    const bool isRealRoot = file.format == FileFormat::gltf && textOf(scene.mRootNode->mName) != "ROOT";
    if (scene.mRootNode->mNumChildren == 0 && !isRealRoot) {
        throw SceneError(file.shown + ": holds nothing: no mesh, light, camera or named node");
    }
}

// Faces that are no points, which the library makes of vertices without faces.
std::uint64_t faceCount(const aiMesh* mesh) {
    if (mesh == nullptr || mesh->mFaces == nullptr) return 0;
    const auto hasCorners = [](const aiFace& face) { return face.mNumIndices > 1; };
    return static_cast<std::uint64_t>(
        std::count_if(mesh->mFaces, mesh->mFaces + mesh->mNumFaces, hasCorners));
}

// The library reads files that are cut off up to where they end, leaves the other faces empty or has the last
// one in their place, and says nothing.
void requirePromisedFaces(const aiScene& scene, const SourceFile& file, ImportNotes& notes) {
    const std::uint64_t promised = file.promisedFaces.value_or(0);
    if (promised == 0) return;
    std::uint64_t faces = 0;
    for (unsigned i = 0; scene.mMeshes != nullptr && i < scene.mNumMeshes; ++i)
        faces += faceCount(scene.mMeshes[i]);
    faces = std::min(faces, file.heldFaces.value_or(faces));
    if (faces >= promised) return;
    const std::string text = "the file is damaged or cut off: it promises " + std::to_string(promised) +
                             " faces, and " + std::to_string(faces) + " could be read";
    if (faces == 0) throw SceneError(file.shown + ": " + text);
    notes.add(file.shown, text);
}

// Those that stand in place of missing faces come last. With polygons among the faces they cannot be told.
void dropRepeatedFaces(aiScene& scene, const SourceFile& file) {
    if (!file.heldFaces || scene.mMeshes == nullptr || scene.mNumMeshes != 1) return;
    aiMesh* mesh = scene.mMeshes[0];
    if (mesh == nullptr || mesh->mNumFaces != file.promisedFaces) return;
    mesh->mNumFaces = static_cast<unsigned>(std::min<std::uint64_t>(*file.heldFaces, mesh->mNumFaces));
}

void refuseNameless(const SceneSnapshot& scene, const SourceFile& file) {
    const auto isSomething = [](const SnapshotNode& node) {
        return !node.name.empty() || (node.object && node.object->type != host::IGameObject::IGAME_HELPER);
    };
    if (std::ranges::any_of(scene.nodes, isSomething)) return;
    throw SceneError(file.shown + ": holds nothing: no mesh, light, camera or named node");
}

SnapshotObject ofType(std::int32_t type) {
    SnapshotObject object;
    object.type = type;
    return object;
}

// Assembles the snapshot of one file.
class Assembly {
  public:
    Assembly(aiScene& source, const SourceFile& file, const SpaceRule& rule, const AssimpOptions& options,
             Progress& progress, ImportNotes& notes)
        : source_(source),
          file_(file),
          rule_(rule),
          progress_(progress),
          notes_(notes),
          bitmaps_(source, file, options, notes),
          materials_(source, file, bitmaps_, progress, notes) {}

    SceneSnapshot assemble() {
        devices_ = matchDevices(source_, nodesInPostOrder(source_, file_), file_, losses_);
        const std::vector<FileNode> nodes = sceneNodes(source_, file_, rule_, devices_);
        meshes_ = convertMeshes(source_, nodes, file_, rule_, progress_, losses_);
        progress_.beginPhase("Converting nodes", nodes.size());
        scene_.nodes.reserve(nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i)
            addNode(nodes[i], meshes_.listOfNode[i]);
        addInstances();
        addSummary();
        scene_.meshes = std::move(meshes_.meshes);
        scene_.materials = materials_.take();
        scene_.maps = bitmaps_.take();
        return std::move(scene_);
    }

  private:
    void addNode(const FileNode& from, std::optional<std::uint32_t> list) {
        const auto index = static_cast<SnapshotRef>(scene_.nodes.size());
        (from.parent ? scene_.nodes[*from.parent].children : scene_.roots).push_back(index);
        SnapshotNode& node = scene_.nodes.emplace_back();
        node.name = nodeName(from, file_);
        NodeMetadata data = readNodeMetadata(*from.node, file_);
        node.hidden = data.hidden || isHiddenByParent(from);
        node.userProperties = std::move(data.userProperties);
        node.worldTransform = objectToWorld(from.nodeToFile, rule_);
        node.object = objectOf(from, list, data.isNull, node);
        const bool isTransformBad = from.isTransformBad || !node.worldTransform.IsFinite();
        if (!node.worldTransform.IsFinite()) node.worldTransform = {};
        addLosses(node, {{SceneLoss::cutName, isCutOff(from.node->mName) ? 1 : 0},
                         {SceneLoss::otherProperties, data.otherProperties},
                         {SceneLoss::reservedProperty, data.hasReservedProperty ? 1 : 0},
                         {SceneLoss::cutProperties, data.isTextCut ? 1 : 0},
                         {SceneLoss::badTransform, isTransformBad ? 1 : 0}});
        progress_.advance(1);
    }

    // glTF hides what is below a hidden node with it; elsewhere each node has a say of its own.
    bool isHiddenByParent(const FileNode& node) const {
        return file_.format == FileFormat::gltf && node.parent && scene_.nodes[*node.parent].hidden;
    }

    void addLosses(const SnapshotNode& node,
                   std::initializer_list<std::pair<SceneLoss, std::uint64_t>> amounts) {
        for (const auto& [loss, amount] : amounts) {
            if (amount != 0) losses_.add(loss, toUtf8(node.name), amount);
        }
    }

    // The node's object; sets the node's transform and material where they depend on it.
    SnapshotObject objectOf(const FileNode& from, std::optional<std::uint32_t> list,
                            std::optional<bool> isNull, SnapshotNode& node) {
        if (list && meshes_.lists[*list].mesh) return meshObject(meshes_.lists[*list], node);
        if (list && meshes_.lists[*list].hasLinesOrPoints) return splineObject(meshes_.lists[*list]);
        if (list) losses_.add(SceneLoss::noTriangles, toUtf8(node.name));
        if (const auto light = devices_.lights.find(from.node); light != devices_.lights.end()) {
            if (const auto state = lightStateOf(*light->second, toUtf8(node.name), losses_)) {
                node.worldTransform = lightToWorld(*light->second, from.nodeToFile, rule_, file_.format);
                SnapshotObject object = ofType(host::IGameObject::IGAME_LIGHT);
                object.light = state;
                return object;
            }
            return ofType(host::IGameObject::IGAME_HELPER);
        }
        if (const auto camera = devices_.cameras.find(from.node); camera != devices_.cameras.end()) {
            node.worldTransform = cameraToWorld(*camera->second, from.nodeToFile, rule_, file_.format);
            return ofType(host::IGameObject::IGAME_CAMERA);
        }
        const bool isBone = !list && isNull && !*isNull;
        return ofType(isBone ? host::IGameObject::IGAME_BONE : host::IGameObject::IGAME_HELPER);
    }

    SnapshotObject meshObject(const MeshList& list, SnapshotNode& node) {
        node.material = materials_.materialOf(list.materials, node.name);
        SnapshotObject object = ofType(host::IGameObject::IGAME_MESH);
        object.mesh = list.mesh;
        return object;
    }

    static SnapshotObject splineObject(const MeshList& list) {
        SnapshotObject object = ofType(host::IGameObject::IGAME_SPLINE);
        if (!list.linesBox.IsEmpty()) object.boundingBox = list.linesBox;
        return object;
    }

    // A file that keeps materials by geometry keeps those of the first node, so the first is made the master
    // (the last of the list): mesh and material then belong together.
    void addInstances() {
        for (const MeshList& list : meshes_.lists) {
            if (!list.mesh || list.instances.size() < 2) continue;
            std::vector<SnapshotRef> nodes(list.instances.begin() + 1, list.instances.end());
            nodes.push_back(list.instances.front());
            const InstanceList shared(std::move(nodes));
            for (const std::uint32_t node : list.instances)
                scene_.nodes[node].instances = shared;
        }
    }

    void addSummary() {
        if (source_.mNumAnimations != 0) notes_.add(file_.shown, kAnimationsAreLeftOut);
        if (file_.format == FileFormat::threeDs && !devices_.cameras.empty()) {
            notes_.addHint(file_.shown,
                           "the roll of cameras, and where animated ones look, is not read from 3DS files; "
                           "check the start view");
        }
        losses_.writeTo(notes_, file_.shown);
    }

    aiScene& source_;
    const SourceFile& file_;
    const SpaceRule& rule_;
    Progress& progress_;
    ImportNotes& notes_;
    BitmapTable bitmaps_;
    MaterialTable materials_;
    NodeDevices devices_;
    ConvertedMeshes meshes_;
    SceneSnapshot scene_;
    SceneLosses losses_;
};

}  // namespace

SceneSnapshot snapshotOf(aiScene& scene, const SourceFile& file, const AssimpOptions& options,
                         Progress& progress, ImportNotes& notes) {
    refuseEmpty(scene, file);
    requirePromisedFaces(scene, file, notes);
    dropRepeatedFaces(scene, file);
    const SpaceRule rule = spaceRuleOf(scene, file, options.upAxis, notes);
    SceneSnapshot snapshot = Assembly(scene, file, rule, options, progress, notes).assemble();
    refuseNameless(snapshot, file);
    return snapshot;
}

}  // namespace velinor
