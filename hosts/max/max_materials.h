// Materials of 3ds Max.
#pragma once

#include "hosts/max/max_sdk.h"

#include <map>
#include <memory>
#include <unordered_map>

#include "host/material.h"
#include "hosts/max/max_properties.h"
#include "hosts/max/max_texmaps.h"

namespace velinor {

class MaxMaterials;

// A material's use of a texture map. Where the SDK gives none in a place, slot and map are those of none.
class MaxTextureMap final : public host::IGameTextureMap {
  public:
    MaxTextureMap(::IGameTextureMap* map, MaxTexmaps& texmaps) : map_(map), texmaps_(texmaps) {}

    int GetStdMapSlot() const override;
    host::Texmap* GetMaxTexmap() const override;

  private:
    ::IGameTextureMap* map_;
    MaxTexmaps& texmaps_;
};

class MaxMaterial final : public host::IGameMaterial {
  public:
    MaxMaterial(::IGameMaterial& material, MaxMaterials& owner, MaxTexmaps& texmaps);

    const void* handle() const override { return &material_; }
    host::HostText GetMaterialClass() const override;
    host::HostText GetMaterialName() const override;
    int GetSubMaterialCount() const override { return material_.GetSubMaterialCount(); }
    host::IGameMaterial* GetSubMaterial(int index) const override;
    int GetMaterialID(int index) const override { return material_.GetMaterialID(index); }
    host::IPropertyContainer* GetIPropertyContainer() override { return &properties_; }
    host::IGameProperty* GetDiffuseData() override { return properties_.of(material_.GetDiffuseData()); }
    host::IGameProperty* GetOpacityData() override { return properties_.of(material_.GetOpacityData()); }
    host::IGameProperty* GetGlossinessData() override {
        return properties_.of(material_.GetGlossinessData());
    }
    host::IGameProperty* GetSpecularData() override { return properties_.of(material_.GetSpecularData()); }
    int GetNumberOfTextureMaps() const override { return material_.GetNumberOfTextureMaps(); }
    host::IGameTextureMap* GetIGameTextureMap(int index) override;

  private:
    ::IGameMaterial& material_;
    MaxMaterials& owner_;
    MaxTexmaps& texmaps_;
    MaxProperties properties_;
    std::map<int, MaxTextureMap> textureMaps_;  // those that were asked for
};

// All materials and maps that an export has met, each with one address for as long as this lives.
class MaxMaterials {
  public:
    // Null for null.
    host::IGameMaterial* of(::IGameMaterial* material);

    MaxTexmaps& texmaps() { return texmaps_; }

  private:
    MaxTexmaps texmaps_;
    std::unordered_map<::IGameMaterial*, std::unique_ptr<MaxMaterial>> made_;  // only looked up
};

}  // namespace velinor
