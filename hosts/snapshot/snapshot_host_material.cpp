#include "hosts/snapshot/snapshot_host_material.h"

namespace velinor {

using host::HostText;

class SnapshotHostMap final : public host::Texmap {
  public:
    SnapshotHostMap(const SnapshotMap& map, const SnapshotHostMaterials& owner) : map_(map), owner_(owner) {}

    HostText GetClassName() const override { return map_.className; }
    HostText GetMapName() const override { return map_.bitmap; }

    host::Texmap* GetSubTexmap(int index) const override {
        const auto place = static_cast<std::size_t>(index);
        return index >= 0 && place < map_.subMaps.size() ? owner_.map(map_.subMaps[place]) : nullptr;
    }

  private:
    const SnapshotMap& map_;
    const SnapshotHostMaterials& owner_;
};

class SnapshotHostTextureMap final : public host::IGameTextureMap {
  public:
    SnapshotHostTextureMap(int slot, host::Texmap* map) : slot_(slot), map_(map) {}

    int GetStdMapSlot() const override { return slot_; }
    host::Texmap* GetMaxTexmap() const override { return map_; }

  private:
    int slot_;
    host::Texmap* map_;
};

namespace {

HostPropertyValue specularOf(const SnapshotMaterial& material) {
    if (const auto* number = std::get_if<float>(&material.specular)) return *number;
    if (const auto* color = std::get_if<host::Point3>(&material.specular)) return *color;
    return {};
}

HostPropertyValue valueOf(const SnapshotProperty& property, const SnapshotHostMaterials& owner) {
    if (const auto* number = std::get_if<float>(&property.value)) return *number;
    if (const auto* p = std::get_if<host::Point3>(&property.value)) return *p;
    if (const auto* p = std::get_if<host::Point4>(&property.value)) return *p;
    if (const auto* map = std::get_if<SnapshotMapProperty>(&property.value)) return owner.map(map->map);
    return {};
}

}  // namespace

class SnapshotHostMaterial final : public host::IGameMaterial {
  public:
    SnapshotHostMaterial(const SnapshotMaterial& material, const SnapshotHostMaterials& owner)
        : material_(material),
          owner_(owner),
          isStandard_(material.className == u"Standard"),
          diffuse_(u"diffuse", material.diffuse),
          opacity_(u"opacity", material.opacity),
          glossiness_(u"glossiness", material.glossiness),
          specular_(u"specular", specularOf(material)) {
        for (const auto& property : material.properties)
            properties_.add(property.name, valueOf(property, owner));
        if (!isStandard_) return;
        for (const auto& texture : material.textureMaps)
            textureMaps_.emplace_back(texture.slot, owner.map(texture.map));
    }

    HostText GetMaterialClass() const override { return material_.className; }
    HostText GetMaterialName() const override { return material_.name; }

    int GetSubMaterialCount() const override { return static_cast<int>(material_.subMaterials.size()); }
    host::IGameMaterial* GetSubMaterial(int index) const override {
        return owner_.material(material_.subMaterials.at(static_cast<std::size_t>(index)).material);
    }
    int GetMaterialID(int index) const override {
        return material_.subMaterials.at(static_cast<std::size_t>(index)).id;
    }

    host::IPropertyContainer* GetIPropertyContainer() override { return &properties_; }
    host::IGameProperty* GetDiffuseData() override { return ifStandard(diffuse_); }
    host::IGameProperty* GetOpacityData() override { return ifStandard(opacity_); }
    host::IGameProperty* GetGlossinessData() override { return ifStandard(glossiness_); }
    host::IGameProperty* GetSpecularData() override { return ifStandard(specular_); }

    int GetNumberOfTextureMaps() const override { return static_cast<int>(textureMaps_.size()); }
    host::IGameTextureMap* GetIGameTextureMap(int index) override {
        return &textureMaps_.at(static_cast<std::size_t>(index));
    }

  private:
    host::IGameProperty* ifStandard(SnapshotHostProperty& property) {
        return isStandard_ ? &property : nullptr;
    }

    const SnapshotMaterial& material_;
    const SnapshotHostMaterials& owner_;
    bool isStandard_;
    SnapshotHostProperty diffuse_;
    SnapshotHostProperty opacity_;
    SnapshotHostProperty glossiness_;
    SnapshotHostProperty specular_;
    SnapshotHostProperties properties_;
    std::vector<SnapshotHostTextureMap> textureMaps_;
};

SnapshotHostMaterials::SnapshotHostMaterials(const SceneSnapshot& scene) {
    maps_.reserve(scene.maps.size());
    for (const auto& map : scene.maps)
        maps_.emplace_back(map, *this);
    materials_.reserve(scene.materials.size());
    for (const auto& material : scene.materials)
        materials_.emplace_back(material, *this);
}

SnapshotHostMaterials::~SnapshotHostMaterials() = default;

host::IGameMaterial* SnapshotHostMaterials::material(std::optional<SnapshotRef> ref) const {
    return ref ? &materials_[*ref] : nullptr;
}

host::Texmap* SnapshotHostMaterials::map(std::optional<SnapshotRef> ref) const {
    return ref ? &maps_[*ref] : nullptr;
}

}  // namespace velinor
