// Properties of objects and materials of 3ds Max.
#pragma once

#include "hosts/max/max_sdk.h"

#include <memory>
#include <string>
#include <unordered_map>

#include "host/property.h"
#include "hosts/max/max_texmaps.h"

namespace velinor {

class MaxProperty final : public host::IGameProperty {
  public:
    MaxProperty(::IGameProperty& property, MaxTexmaps& texmaps) : property_(property), texmaps_(texmaps) {}

    host::HostText GetName() const override;
    bool GetPropertyValue(float& value) const override;
    bool GetPropertyValue(host::Point3& value) const override;
    bool GetPropertyValue(host::Point4& value) const override;
    host::Texmap* GetTexmap() const override;

  private:
    ::IGameProperty& property_;
    MaxTexmaps& texmaps_;
};

// The properties of one object or material, each with one address for as long as this lives.
class MaxProperties final : public host::IPropertyContainer {
  public:
    // `container` may be null: there are no properties then, and only those that are handed to `of`.
    MaxProperties(::IPropertyContainer* container, MaxTexmaps& texmaps)
        : container_(container), texmaps_(texmaps) {}

    host::IGameProperty* QueryProperty(host::HostText name) override;
    void EnumerateProperties(host::PropertyEnum& callback) override;

    // Null for null.
    host::IGameProperty* of(::IGameProperty* property);

  private:
    ::IPropertyContainer* container_;
    MaxTexmaps& texmaps_;
    std::unordered_map<::IGameProperty*, std::unique_ptr<MaxProperty>> made_;  // only looked up
};

}  // namespace velinor
