#include "hosts/max/max_materials.h"

#include "hosts/max/max_values.h"

namespace velinor {

int MaxTextureMap::GetStdMapSlot() const {
    constexpr int kNoSlot = -1;
    return map_ == nullptr ? kNoSlot : map_->GetStdMapSlot();
}

host::Texmap* MaxTextureMap::GetMaxTexmap() const {
    return map_ == nullptr ? nullptr : texmaps_.of(map_->GetMaxTexmap());
}

MaxMaterial::MaxMaterial(::IGameMaterial& material, MaxMaterials& owner, MaxTexmaps& texmaps)
    : material_(material),
      owner_(owner),
      texmaps_(texmaps),
      properties_(material.GetIPropertyContainer(), texmaps) {}

host::HostText MaxMaterial::GetMaterialClass() const {
    return hostText(material_.GetMaterialClass());
}

host::HostText MaxMaterial::GetMaterialName() const {
    return hostText(material_.GetMaterialName());
}

host::IGameMaterial* MaxMaterial::GetSubMaterial(int index) const {
    return owner_.of(material_.GetSubMaterial(index));
}

host::IGameTextureMap* MaxMaterial::GetIGameTextureMap(int index) {
    const auto found = textureMaps_.find(index);
    if (found != textureMaps_.end()) return &found->second;
    return &textureMaps_.try_emplace(index, material_.GetIGameTextureMap(index), texmaps_).first->second;
}

host::IGameMaterial* MaxMaterials::of(::IGameMaterial* material) {
    if (material == nullptr) return nullptr;
    auto& made = made_[material];
    if (!made) made = std::make_unique<MaxMaterial>(*material, *this, texmaps_);
    return made.get();
}

}  // namespace velinor
