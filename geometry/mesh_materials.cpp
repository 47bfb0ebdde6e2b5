#include "geometry/mesh_materials.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace velinor {
namespace {

// The sub-materials of a multi-material by ID. Of two with one ID the first counts; an ID without one has
// none.
class SubMaterials {
  public:
    explicit SubMaterials(const host::IGameMaterial& material) {
        for (int i = 0; i < material.GetSubMaterialCount(); ++i)
            byId_.emplace(material.GetMaterialID(i), material.GetSubMaterial(i));
    }

    host::IGameMaterial* of(int id) const {
        const auto found = byId_.find(id);
        return found == byId_.end() ? nullptr : found->second;
    }

  private:
    std::map<int, host::IGameMaterial*> byId_;
};

// The IDs that share one material name.
struct SharedName {
    std::vector<int> ids;      // in the host's order
    std::vector<int> records;  // those of them that are lower than all before
};

// For each ID the first one, in the host's order, that is lower and bears the same name. That one is always
// lower than all before it, so it is found among the falling records.
void addRemaps(const SharedName& shared, std::map<std::int32_t, std::int32_t>& idRemap) {
    for (const int id : shared.ids) {
        const auto lower =
            std::upper_bound(shared.records.begin(), shared.records.end(), id, std::greater<>());
        if (lower != shared.records.end()) idRemap.emplace(id, *lower);
    }
}

MeshMaterials nameSubMaterials(const host::IGameMaterial& material, const std::vector<int>& activeIds,
                               const ExportSettings& settings, MaterialMap& materialMap) {
    const SubMaterials subMaterials(material);
    MeshMaterials named;
    std::unordered_map<std::string, SharedName> byName;  // walked only where the order does not matter
    for (const int id : activeIds) {
        host::IGameMaterial* subMaterial = subMaterials.of(id);
        const MaterialVariant variant = materialVariant(subMaterial, settings);
        SharedName& shared = byName[variant.scriptName];
        if (shared.ids.empty()) {
            named.materialNames.emplace(id, variant);
            named.maxMaterialId = std::max(named.maxMaterialId, id);
        }
        if (shared.records.empty() || id < shared.records.back()) shared.records.push_back(id);
        shared.ids.push_back(id);
        registerMaterial(materialMap, subMaterial, variant);
    }
    for (const auto& [name, shared] : byName)
        addRemaps(shared, named.idRemap);
    return named;
}

}  // namespace

std::int32_t MeshMaterials::submeshOf(std::int32_t id) const {
    const auto remapped = idRemap.find(id);
    return std::min(remapped == idRemap.end() ? id : remapped->second, maxMaterialId);
}

MeshMaterials nameMeshMaterials(host::IGameMaterial* material, const std::vector<int>& activeIds,
                                const ExportSettings& settings, MaterialMap& materialMap) {
    if (material != nullptr && material->GetSubMaterialCount() != 0)
        return nameSubMaterials(*material, activeIds, settings, materialMap);
    MeshMaterials named;
    named.materialNames.emplace(0, materialVariant(material, settings));
    if (material != nullptr) registerMaterial(materialMap, material, named.materialNames.at(0));
    return named;
}

}  // namespace velinor
