#include "tests/max/sdk_materials.h"

#include "hosts/max/max_values.h"

namespace velinor {
namespace {

// The materials and all below them.
std::set<host::IGameMaterial*> withSubMaterials(const std::set<host::IGameMaterial*>& used) {
    std::set<host::IGameMaterial*> all;
    std::vector<host::IGameMaterial*> open(used.begin(), used.end());
    while (!open.empty()) {
        host::IGameMaterial* material = open.back();
        open.pop_back();
        if (material == nullptr || !all.insert(material).second) continue;
        for (int i = 0; i < material->GetSubMaterialCount(); ++i)
            open.push_back(material->GetSubMaterial(i));
    }
    return all;
}

}  // namespace

SdkTexmap::SdkTexmap(host::Texmap& map, SdkMaterials& owner)
    : map_(map),
      owner_(owner),
      className_(maxString(map.GetClassName())),
      mapName_(maxString(map.GetMapName())) {}

Class_ID SdkTexmap::ClassID() {
    return mapName_.empty() ? Class_ID(0x1234, 0) : Class_ID(BMTEX_CLASS_ID, 0);
}

void SdkTexmap::GetClassName(MSTR& name, bool localized) const {
    name = localized ? MSTR(className_.c_str()) : MSTR(maxText(u"not displayed"));
}

::Texmap* SdkTexmap::GetSubTexmap(int index) {
    return owner_.of(map_.GetSubTexmap(index));
}

SdkProperty::SdkProperty(host::IGameProperty& property, SdkMaterials& owner)
    : property_(property), owner_(owner), name_(maxString(property.GetName())) {}

bool SdkProperty::GetPropertyValue(float& value, ::TimeValue t, bool inPercent) {
    return t == host::TIME_NegInfinity && !inPercent && property_.GetPropertyValue(value);
}

bool SdkProperty::GetPropertyValue(::Point3& value, ::TimeValue t) {
    host::Point3 read;
    if (t != host::TIME_NegInfinity || !property_.GetPropertyValue(read)) return false;
    value = {read.x, read.y, read.z};
    return true;
}

bool SdkProperty::GetPropertyValue(::Point4& value, ::TimeValue t) {
    host::Point4 read;
    if (t != host::TIME_NegInfinity || !property_.GetPropertyValue(read)) return false;
    value = {read.x, read.y, read.z, read.w};
    return true;
}

::Texmap* SdkProperty::GetTexmap(ParamID id, ::TimeValue /*t*/, int tabIndex) {
    return id == kParamId && tabIndex == 0 ? owner_.of(property_.GetTexmap()) : nullptr;
}

::IGameProperty* SdkProperties::QueryProperty(const MCHAR* name) {
    return owner_.of(container_.QueryProperty(hostText(name)));
}

void SdkProperties::EnumerateProperties(::PropertyEnum& callback) {
    class Forwarder final : public host::PropertyEnum {
      public:
        Forwarder(SdkMaterials& owner, ::PropertyEnum& callback) : owner_(owner), callback_(callback) {}
        bool Proc(host::IGameProperty& property) override { return callback_.Proc(owner_.of(&property)); }

      private:
        SdkMaterials& owner_;
        ::PropertyEnum& callback_;
    } forwarder(owner_, callback);
    container_.EnumerateProperties(forwarder);
}

::Texmap* SdkTextureMap::GetMaxTexmap() {
    return owner_.of(map_.GetMaxTexmap());
}

SdkMaterial::SdkMaterial(host::IGameMaterial& material, SdkMaterials& owner)
    : material_(material),
      owner_(owner),
      name_(maxString(material.GetMaterialName())),
      class_(maxString(material.GetMaterialClass())),
      properties_(*material.GetIPropertyContainer(), owner) {}

::IGameMaterial* SdkMaterial::GetSubMaterial(int index) {
    return owner_.of(material_.GetSubMaterial(index));
}
::IGameProperty* SdkMaterial::GetDiffuseData() {
    return owner_.of(material_.GetDiffuseData());
}
::IGameProperty* SdkMaterial::GetSpecularData() {
    return owner_.of(material_.GetSpecularData());
}
::IGameProperty* SdkMaterial::GetOpacityData() {
    return owner_.of(material_.GetOpacityData());
}
::IGameProperty* SdkMaterial::GetGlossinessData() {
    return owner_.of(material_.GetGlossinessData());
}

::IGameTextureMap* SdkMaterial::GetIGameTextureMap(int index) {
    host::IGameTextureMap* map = material_.GetIGameTextureMap(index);
    return map == nullptr ? nullptr : &textureMaps_.try_emplace(index, *map, owner_).first->second;
}

SdkMaterials::SdkMaterials(const std::set<host::IGameMaterial*>& used) {
    const auto all = withSubMaterials(used);
    materials_.reserve(all.size());
    for (host::IGameMaterial* material : all)
        byHost_[material] = &materials_.emplace_back(*material, *this);
}

SdkMaterials::~SdkMaterials() = default;

::IGameMaterial* SdkMaterials::of(host::IGameMaterial* material) {
    return material == nullptr ? nullptr : byHost_.at(material);
}

::Texmap* SdkMaterials::of(host::Texmap* map) {
    if (map == nullptr) return nullptr;
    auto& made = maps_[map];
    if (!made) made = std::make_unique<SdkTexmap>(*map, *this);
    return made.get();
}

::IGameProperty* SdkMaterials::of(host::IGameProperty* property) {
    if (property == nullptr) return nullptr;
    auto& made = properties_[property];
    if (!made) made = std::make_unique<SdkProperty>(*property, *this);
    return made.get();
}

}  // namespace velinor
