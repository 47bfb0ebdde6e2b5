#include "hosts/assimp/assimp_reader.h"

#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <exception>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_axes.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/assimp_lights_cameras.h"
#include "hosts/assimp/assimp_materials.h"
#include "hosts/assimp/assimp_meshes.h"
#include "hosts/assimp/assimp_metadata.h"
#include "hosts/assimp/assimp_nodes.h"
#include "hosts/assimp/assimp_preflight.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/assimp/unread_parts.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

constexpr std::uint64_t kReadSteps = 100;

// Passes the library's progress on. An exception of the receiver ends the load and is kept, since the library
// must not see it.
class ReadProgress final : public Assimp::ProgressHandler {
  public:
    ReadProgress(Progress& progress, std::exception_ptr& failure) : progress_(progress), failure_(failure) {}

    bool Update(float fraction) override {
        if (failure_) return false;
        const auto step = static_cast<std::uint64_t>(std::clamp(fraction, 0.0F, 1.0F) * kReadSteps);
        try {
            progress_.advance(step > done_ ? step - done_ : 0);
        } catch (...) {
            failure_ = std::current_exception();
            return false;
        }
        done_ = std::max(done_, step);
        return true;
    }

  private:
    Progress& progress_;
    std::exception_ptr& failure_;
    std::uint64_t done_ = 0;
};

void setOptions(Assimp::Importer& importer) {
    // Animations and weights are not needed, and reading them aborts on some files.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_READ_ANIMATIONS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_READ_WEIGHTS, false);
    // No invented mesh in files that have nodes only.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    // The names of COLLADA nodes, not their IDs, in which brackets and blanks are lost.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
}

// Why the library did not load the file, in one line.
std::string reasonOf(const Assimp::Importer& importer) {
    const std::string reason = oneLine(importer.GetErrorString());
    if (reason.find("bad_alloc") != std::string::npos) return "the memory does not suffice";
    return reason.empty() ? "the library gives no reason" : reason;
}

// Loads the file and completes `source`. Triangulation is the only step: the others change names, meshes or
// nodes.
std::unique_ptr<aiScene> load(const std::filesystem::path& file, SourceFile& source, Progress& progress) {
    progress.beginPhase("Reading the scene file", kReadSteps);
    std::exception_ptr failure;
    const auto importer = makeImporter();
    setOptions(*importer);
    importer->SetProgressHandler(new ReadProgress(progress, failure));  // the importer owns it
    const aiScene* loaded = importer->ReadFile(utf8Path(file), aiProcess_Triangulate);
    if (failure) std::rethrow_exception(failure);
    if (loaded == nullptr) throw SceneError(source.shown + ": cannot be read: " + reasonOf(*importer));
    source.format = formatLastRead(*importer);
    source.isAsciiFbx = source.isAsciiFbx && source.format == FileFormat::fbx;
    std::unique_ptr<aiScene> scene(importer->GetOrphanedScene());
    aiString generator;
    if (scene->mMetaData != nullptr && scene->mMetaData->Get(AI_METADATA_SOURCE_GENERATOR, generator))
        source.generator = textOf(generator);
    return scene;
}

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
        devices_ = matchDevices(source_, nodesInPostOrder(source_, file_), file_, notes_);
        const std::vector<FileNode> nodes = sceneNodes(source_, file_, rule_, devices_);
        meshes_ = convertMeshes(source_, nodes, file_, rule_, progress_, notes_);
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
        if (isCutOff(from.node->mName))
            notes_.add(toUtf8(node.name), "the name is longer than can be read; it is cut");
        NodeMetadata data = readNodeMetadata(*from.node, file_);
        node.hidden = data.hidden;
        node.userProperties = std::move(data.userProperties);
        otherProperties_ += data.otherProperties;
        if (data.isTextCut)
            notes_.add(toUtf8(node.name), "the user properties are longer than can be read; they are cut");
        node.worldTransform = objectToWorld(from.nodeToFile, rule_);
        node.object = objectOf(from, list, data.isNull, node);
        progress_.advance(1);
    }

    // The node's object; sets the node's transform and material where they depend on it.
    SnapshotObject objectOf(const FileNode& from, std::optional<std::uint32_t> list,
                            std::optional<bool> isNull, SnapshotNode& node) {
        if (list && meshes_.lists[*list].mesh) return meshObject(meshes_.lists[*list], node);
        if (list && meshes_.lists[*list].hasLinesOrPoints) return splineObject(meshes_.lists[*list]);
        if (list)
            notes_.add(toUtf8(node.name),
                       "the mesh of this node has no triangles; the node is kept as a helper");
        if (const auto light = devices_.lights.find(from.node); light != devices_.lights.end()) {
            if (const auto state = lightStateOf(*light->second)) {
                node.worldTransform = lightToWorld(*light->second, from.nodeToFile, rule_, file_.format);
                SnapshotObject object = ofType(host::IGameObject::IGAME_LIGHT);
                object.light = state;
                return object;
            }
            notes_.add(toUtf8(node.name), "ambient lights are left out; the node is kept as a helper");
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
        if (source_.mNumAnimations != 0)
            notes_.add(file_.shown, "animations are left out: the scene stands as at rest");
        if (otherProperties_ != 0) {
            notes_.add(file_.shown,
                       std::to_string(otherProperties_) +
                           " user properties of nodes are left out: they are no 32-bit integers");
        }
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
    std::size_t otherProperties_ = 0;
};

SceneSnapshot read(const std::filesystem::path& file, SourceFile& source, const AssimpOptions& options,
                   Progress& progress, ImportNotes& notes) {
    const std::unique_ptr<aiScene> loaded = load(file, source, progress);
    refuseEmpty(*loaded, source);
    noteUnreadParts(source, notes);
    const SpaceRule rule = spaceRuleOf(*loaded, source, options.upAxis, notes);
    SceneSnapshot scene = Assembly(*loaded, source, rule, options, progress, notes).assemble();
    refuseNameless(scene, source);
    return scene;
}

}  // namespace

SceneSnapshot readWithAssimp(const std::filesystem::path& file, const AssimpOptions& options,
                             Progress& progress, ImportNotes& notes) {
    SourceFile source = examineSceneFile(file);
    try {
        return read(file, source, options, progress, notes);
    } catch (const std::bad_alloc&) {
        throw SceneError(source.shown + ": cannot be read: the memory does not suffice");
    }
}

}  // namespace velinor
