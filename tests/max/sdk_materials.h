// Materials, maps and properties of the SDK's stand-in, over those of a host.
#pragma once

#include "hosts/max/max_sdk.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/material.h"
#include "tests/max/sdk_mesh_object.h"

namespace velinor {

class SdkMaterials;

// A bitmap where it names a file, else some map.
class SdkTexmap final : public ::BitmapTex {
  public:
    SdkTexmap(host::Texmap& map, SdkMaterials& owner);

    Class_ID ClassID() override;
    void GetClassName(MSTR& name, bool localized) const override;
    ::Texmap* GetSubTexmap(int index) override;
    const MCHAR* GetMapName() override { return mapName_.c_str(); }

  private:
    host::Texmap& map_;
    SdkMaterials& owner_;
    SdkString className_;
    SdkString mapName_;
};

class SdkProperty final : public ::IGameProperty, public ::IParamBlock2 {
  public:
    using ::IGameProperty::operator new;
    using ::IGameProperty::operator delete;

    SdkProperty(host::IGameProperty& property, SdkMaterials& owner);

    const MCHAR* GetName() override { return name_.c_str(); }
    bool GetPropertyValue(float& value, ::TimeValue t, bool inPercent) override;
    bool GetPropertyValue(::Point3& value, ::TimeValue t) override;
    bool GetPropertyValue(::Point4& value, ::TimeValue t) override;
    bool IsPBlock2() override { return property_.GetTexmap() != nullptr; }
    ::IParamBlock2* GetMaxParamBlock2() override { return this; }
    ParamID GetParamID() override { return kParamId; }
    ::Texmap* GetTexmap(ParamID id, ::TimeValue t, int tabIndex) override;

  private:
    static constexpr ParamID kParamId = 101;

    host::IGameProperty& property_;
    SdkMaterials& owner_;
    SdkString name_;
};

class SdkProperties final : public ::IPropertyContainer {
  public:
    SdkProperties(host::IPropertyContainer& container, SdkMaterials& owner)
        : container_(container), owner_(owner) {}

    ::IGameProperty* QueryProperty(const MCHAR* name) override;
    void EnumerateProperties(::PropertyEnum& callback) override;

  private:
    host::IPropertyContainer& container_;
    SdkMaterials& owner_;
};

class SdkTextureMap final : public ::IGameTextureMap {
  public:
    SdkTextureMap(host::IGameTextureMap& map, SdkMaterials& owner) : map_(map), owner_(owner) {}

    ::Texmap* GetMaxTexmap() override;
    int GetStdMapSlot() override { return map_.GetStdMapSlot(); }

  private:
    host::IGameTextureMap& map_;
    SdkMaterials& owner_;
};

class SdkMaterial final : public ::IGameMaterial {
  public:
    SdkMaterial(host::IGameMaterial& material, SdkMaterials& owner);

    const MCHAR* GetMaterialName() override { return name_.c_str(); }
    const MCHAR* GetMaterialClass() override { return class_.c_str(); }
    int GetSubMaterialCount() override { return material_.GetSubMaterialCount(); }
    ::IGameMaterial* GetSubMaterial(int index) override;
    int GetMaterialID(int index) override { return material_.GetMaterialID(index); }
    ::IPropertyContainer* GetIPropertyContainer() override { return &properties_; }
    ::IGameProperty* GetDiffuseData() override;
    ::IGameProperty* GetSpecularData() override;
    ::IGameProperty* GetOpacityData() override;
    ::IGameProperty* GetGlossinessData() override;
    int GetNumberOfTextureMaps() override { return material_.GetNumberOfTextureMaps(); }
    ::IGameTextureMap* GetIGameTextureMap(int index) override;

  private:
    host::IGameMaterial& material_;
    SdkMaterials& owner_;
    SdkString name_;
    SdkString class_;
    SdkProperties properties_;
    std::map<int, SdkTextureMap> textureMaps_;
};

// All materials of a scene. Their addresses are in the order of the host's.
class SdkMaterials {
  public:
    // `used` are the materials of nodes; their sub-materials come along.
    explicit SdkMaterials(const std::set<host::IGameMaterial*>& used);
    SdkMaterials(const SdkMaterials&) = delete;
    SdkMaterials& operator=(const SdkMaterials&) = delete;
    ~SdkMaterials();

    // Null for null.
    ::IGameMaterial* of(host::IGameMaterial* material);
    ::Texmap* of(host::Texmap* map);
    ::IGameProperty* of(host::IGameProperty* property);

  private:
    std::vector<SdkMaterial> materials_;
    std::map<host::IGameMaterial*, SdkMaterial*> byHost_;
    std::map<host::Texmap*, std::unique_ptr<SdkTexmap>> maps_;
    std::map<host::IGameProperty*, std::unique_ptr<SdkProperty>> properties_;
};

}  // namespace velinor
