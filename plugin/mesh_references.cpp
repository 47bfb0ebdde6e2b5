#include "plugin/mesh_references.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "base/text.h"
#include "scene/node_name.h"

namespace velinor {
namespace {

// The nodes that refer to one mesh.
struct Users {
    const SceneNodeRecord* first;
    std::size_t count;
};

// The name of the mesh's file without its ending. An instance has its master's name by low bytes.
std::string meshNameOf(const SceneNodeRecord& record) {
    if (record.isInstanceMaster) return sanitiseName(nodeNameUtf8(*record.node).name);
    return sanitiseName(toUtf16(record.masterName) ? record.masterName : utf8OfLowBytes(record.masterName));
}

// The meshes that the tree refers to, by the name in their file's name.
std::map<std::string, Users> referencedMeshes(const SceneNodeRecord& rootRecord) {
    std::map<std::string, Users> meshes;
    std::vector<const SceneNodeRecord*> pending{&rootRecord};
    while (!pending.empty()) {
        const SceneNodeRecord& record = *pending.back();
        pending.pop_back();
        const auto firstChild = static_cast<std::ptrdiff_t>(pending.size());
        for (const SceneNodeRecord& child : record.children)
            pending.push_back(&child);
        std::reverse(pending.begin() + firstChild, pending.end());
        if (record.node == nullptr || record.kind != SceneNodeKind::Mesh) continue;
        const auto [users, isNew] = meshes.try_emplace(meshNameOf(record), Users{&record, 0});
        ++users->second.count;
    }
    return meshes;
}

std::string describe(const Users& users) {
    std::string text = "named by node " + toUtf8(users.first->node->GetName());
    if (users.count > 1) text += " and " + std::to_string(users.count - 1) + " more";
    return text;
}

bool isThere(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(file, error);
}

}  // namespace

void reportMissingMeshes(const SceneNodeRecord& rootRecord, const ExportSettings& settings,
                         const std::filesystem::path& resourcesFolder, Report& report) {
    const auto meshes = referencedMeshes(rootRecord);
    for (const auto& [name, users] : meshes) {
        for (const char* ending : {".mesh", ".mesh_phy.obj"}) {
            if (!settings.generatePhysicalMeshes && std::string_view(ending) == ".mesh_phy.obj") continue;
            if (!isThere(resourcesFolder / (name + ending)))
                report.add(MessageId::meshFileMissing, name + ending, describe(users));
        }
    }
    if (!settings.generatePhysicalMeshes && !meshes.empty()) {
        report.add(MessageId::collisionMeshesOff, "index.jsx",
                   std::to_string(meshes.size()) + (meshes.size() == 1 ? " mesh" : " meshes"));
    }
}

}  // namespace velinor
