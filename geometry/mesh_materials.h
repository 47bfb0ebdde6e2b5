// The materials of one mesh: which submesh a face belongs to, and what its material is called.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/material.h"
#include "materials/material_map.h"
#include "plugin/export_settings.h"

namespace velinor {

// What a mesh's material IDs become. Submeshes are keyed by material ID.
struct MeshMaterials {
    std::map<std::int32_t, MaterialVariant> materialNames;  // by ID; iterated in ascending order
    std::map<std::int32_t, std::int32_t> idRemap;           // an ID to a lower one of the same material name
    std::int32_t maxMaterialId = 0;                         // the largest ID that brought a name of its own

    // The submesh of a face with the material ID `id`: IDs beyond the last named one belong to that.
    std::int32_t submeshOf(std::int32_t id) const;
};

// Names the materials of a mesh that has `material` (null: none) and whose faces use the IDs `activeIds`, in
// the host's order, and notes in `materialMap` what is to be written: the material, or of a multi-material
// each sub-material that is used, empty slots included. A mesh without a material notes nothing.
MeshMaterials nameMeshMaterials(host::IGameMaterial* material, const std::vector<int>& activeIds,
                                const ExportSettings& settings, MaterialMap& materialMap);

}  // namespace velinor
