// The materials that an export's meshes use, with the names under which they are written.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/material.h"
#include "plugin/export_settings.h"

namespace velinor {

// One form in which a material is written.
struct MaterialVariant {
    std::string scriptName;             // sanitised: the name of the script's file and of the material in it
    std::string reflectionTextureName;  // the file name of the reflection map

    bool operator==(const MaterialVariant&) const = default;
};

// The forms of one material, each once, in the order in which meshes ask for them.
using MaterialGroup = std::vector<MaterialVariant>;

// Orders materials by their handles in the host. The missing material, null, comes first.
struct MaterialHandleOrder {
    bool operator()(const host::IGameMaterial* a, const host::IGameMaterial* b) const {
        return std::less<>()(handleOf(a), handleOf(b));
    }

  private:
    static const void* handleOf(const host::IGameMaterial* material) {
        return material == nullptr ? nullptr : material->handle();
    }
};

// The materials to write, in ascending order of their handles. An empty slot of a multi-material stands for
// the missing material. The host owns the materials.
using MaterialMap = std::map<host::IGameMaterial*, MaterialGroup, MaterialHandleOrder>;

// The form of `material` in this export. A missing one, null, is called "default".
MaterialVariant materialVariant(const host::IGameMaterial* material, const ExportSettings& settings);

// Notes that a mesh uses `material` in the form `variant`.
void registerMaterial(MaterialMap& materials, host::IGameMaterial* material, const MaterialVariant& variant);

}  // namespace velinor
