#include "materials/material_map.h"

#include <algorithm>

#include "base/text.h"
#include "platform/path_text.h"

namespace velinor {

MaterialVariant materialVariant(const host::IGameMaterial* material, const ExportSettings& settings) {
    return {material == nullptr ? "default" : sanitiseName(toUtf8(material->GetMaterialName())),
            narrowFileName(settings.customReflectionMap)};
}

void registerMaterial(MaterialMap& materials, host::IGameMaterial* material, const MaterialVariant& variant) {
    MaterialGroup& group = materials[material];
    if (std::ranges::find(group, variant) == group.end()) group.push_back(variant);
}

}  // namespace velinor
