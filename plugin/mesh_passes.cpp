#include "plugin/mesh_passes.h"

#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "geometry/mesh_conversion.h"
#include "geometry/ogre_mesh_writer.h"
#include "platform/file_name_key.h"
#include "scene/node_name.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The names of the mesh files, one for each node.
std::vector<std::string> meshNamesOf(const NodeList& meshNodes, Report& report) {
    std::vector<std::string> baseNames;
    baseNames.reserve(meshNodes.size());
    std::unordered_map<fs::path::string_type, host::IGameNode*> owners;  // only looked up, never walked
    for (host::IGameNode* node : meshNodes) {
        const std::string name = nodeNameUtf8(*node).name;
        baseNames.push_back(sanitiseName(name));
        const std::string& baseName = baseNames.back();
        if (baseName != name) report.add(MessageId::meshNameChanged, name + ".mesh", baseName + ".mesh");
        const auto [owner, isNew] = owners.try_emplace(fileNameKey(baseName), node);
        if (isNew) continue;
        report.add(MessageId::meshNameShared, toUtf8(node->GetName()),
                   baseName + ".mesh is also the mesh of " + toUtf8(owner->second->GetName()));
        owner->second = node;
    }
    return baseNames;
}

bool writeMeshes(const MeshPassContext& context, const NodeList& meshNodes,
                 const std::vector<std::string>& baseNames) {
    context.progress.beginPhase("Writing meshes", meshNodes.size() * kProgressPerMesh);
    const MeshWriterContext writer{context.folders.resourcesFolder,
                                   context.settings,
                                   context.host,
                                   context.materialMap,
                                   context.report,
                                   context.progress};
    for (std::size_t i = 0; i < meshNodes.size(); ++i) {
        const bool isWritten = writeOgreMesh(writer, *meshNodes[i], baseNames[i]);
        meshNodes[i]->ReleaseIGameObject();
        if (!isWritten) return false;
    }
    return true;
}

// The face count as the host reports it.
std::int32_t faceCountOf(host::IGameNode& node) {
    host::IGameObject* object = node.GetIGameObject();
    std::int32_t count = 0;
    if (object != nullptr && object->GetIGameType() == host::IGameObject::IGAME_MESH &&
        object->InitializeData())
        count = static_cast<host::IGameMesh*>(object)->GetNumberOfFaces();
    node.ReleaseIGameObject();
    return count;
}

bool convertMeshes(const MeshPassContext& context, const NodeList& meshNodes,
                   const std::vector<std::string>& baseNames) {
    context.progress.beginPhase("Converting meshes", meshNodes.size());
    const MeshConversionContext conversion{context.folders, context.settings, context.tools, context.report};
    for (std::size_t i = 0; i < meshNodes.size(); ++i) {
        if (!convertMesh(conversion, baseNames[i], faceCountOf(*meshNodes[i]))) return false;
        context.progress.advance(1);
    }
    return true;
}

}  // namespace

bool exportMeshes(const MeshPassContext& context, const NodeList& meshNodes) {
    const std::vector<std::string> baseNames = meshNamesOf(meshNodes, context.report);
    return writeMeshes(context, meshNodes, baseNames) && convertMeshes(context, meshNodes, baseNames);
}

}  // namespace velinor
