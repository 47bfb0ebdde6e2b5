// Named values of the host's objects and materials.
#pragma once

#include "host/geometry.h"
#include "host/text.h"

namespace velinor::host {

class Texmap;

// One named value. Lives as long as the object or material that gave it.
class IGameProperty {
  public:
    virtual ~IGameProperty() = default;

    virtual HostText GetName() const = 0;

    // The value at the static frame, where it is of that type: true, and `value` is set. Otherwise false, and
    // `value` stays as it was.
    virtual bool GetPropertyValue(float& value) const = 0;
    virtual bool GetPropertyValue(Point3& value) const = 0;
    virtual bool GetPropertyValue(Point4& value) const = 0;

    // The texture map that the property holds; null where it holds none. Owned by the scene.
    virtual Texmap* GetTexmap() const = 0;
};

// What IPropertyContainer::EnumerateProperties calls for each property.
class PropertyEnum {
  public:
    virtual ~PropertyEnum() = default;

    // Answers whether the enumeration is to stop.
    virtual bool Proc(IGameProperty& property) = 0;
};

// The properties of one object or material.
class IPropertyContainer {
  public:
    virtual ~IPropertyContainer() = default;

    // The property of that name; null where there is none.
    virtual IGameProperty* QueryProperty(HostText name) = 0;

    // Calls `callback` for each property, in the host's order, until it answers true.
    virtual void EnumerateProperties(PropertyEnum& callback) = 0;
};

}  // namespace velinor::host
