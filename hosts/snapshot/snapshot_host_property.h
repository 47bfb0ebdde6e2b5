// Properties of objects and materials, as a snapshot host gives them.
#pragma once

#include <variant>
#include <vector>

#include "host/property.h"

namespace velinor {

// Nothing (a text, which the host's numeric reads do not give), one number, 3 or 4 numbers, or a texture map.
using HostPropertyValue = std::variant<std::monostate, float, host::Point3, host::Point4, host::Texmap*>;

// One property. It is read as what it holds and as nothing else: 3 numbers are a Point3, 4 numbers a Point4.
class SnapshotHostProperty final : public host::IGameProperty {
  public:
    SnapshotHostProperty(host::HostText name, HostPropertyValue value) : name_(name), value_(value) {}

    host::HostText GetName() const override { return name_; }
    bool GetPropertyValue(float& value) const override { return get(value); }
    bool GetPropertyValue(host::Point3& value) const override { return get(value); }
    bool GetPropertyValue(host::Point4& value) const override { return get(value); }

    host::Texmap* GetTexmap() const override {
        const auto* map = std::get_if<host::Texmap*>(&value_);
        return map ? *map : nullptr;
    }

  private:
    template <class T>
    bool get(T& value) const {
        const T* held = std::get_if<T>(&value_);
        if (held) value = *held;
        return held != nullptr;
    }

    host::HostText name_;
    HostPropertyValue value_;
};

// Properties in the host's order. Of several with one name, the first is found.
class SnapshotHostProperties final : public host::IPropertyContainer {
  public:
    void add(host::HostText name, HostPropertyValue value) { properties_.emplace_back(name, value); }
    bool isEmpty() const { return properties_.empty(); }

    host::IGameProperty* QueryProperty(host::HostText name) override {
        for (auto& property : properties_) {
            if (property.GetName() == name) return &property;
        }
        return nullptr;
    }

    void EnumerateProperties(host::PropertyEnum& callback) override {
        for (auto& property : properties_) {
            if (callback.Proc(property)) return;
        }
    }

  private:
    std::vector<SnapshotHostProperty> properties_;
};

}  // namespace velinor
