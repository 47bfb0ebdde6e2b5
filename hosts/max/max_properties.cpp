#include "hosts/max/max_properties.h"

#include "hosts/max/max_values.h"

namespace velinor {
namespace {

// Hands each property of the SDK on to a callback of the exporter.
class Forwarder final : public ::PropertyEnum {
  public:
    Forwarder(MaxProperties& properties, host::PropertyEnum& callback)
        : properties_(properties), callback_(callback) {}

    bool Proc(::IGameProperty* property) override {
        host::IGameProperty* handed = properties_.of(property);
        return handed != nullptr && callback_.Proc(*handed);
    }

  private:
    MaxProperties& properties_;
    host::PropertyEnum& callback_;
};

}  // namespace

host::HostText MaxProperty::GetName() const {
    return hostText(property_.GetName());
}

bool MaxProperty::GetPropertyValue(float& value) const {
    float read = 0;
    const bool isRead = property_.GetPropertyValue(read);
    if (isRead) value = read;
    return isRead;
}

bool MaxProperty::GetPropertyValue(host::Point3& value) const {
    ::Point3 read;
    const bool isRead = property_.GetPropertyValue(read);
    if (isRead) value = hostPoint(read);
    return isRead;
}

bool MaxProperty::GetPropertyValue(host::Point4& value) const {
    ::Point4 read;
    const bool isRead = property_.GetPropertyValue(read);
    if (isRead) value = {read.x, read.y, read.z, read.w};
    return isRead;
}

// Maps are parameters of blocks of the second kind; the scene interface itself does not give them.
host::Texmap* MaxProperty::GetTexmap() const {
    ::IParamBlock2* block = property_.IsPBlock2() ? property_.GetMaxParamBlock2() : nullptr;
    return block == nullptr ? nullptr : texmaps_.of(block->GetTexmap(property_.GetParamID(), 0, 0));
}

host::IGameProperty* MaxProperties::QueryProperty(host::HostText name) {
    return container_ == nullptr ? nullptr : of(container_->QueryProperty(maxString(name).c_str()));
}

void MaxProperties::EnumerateProperties(host::PropertyEnum& callback) {
    if (container_ == nullptr) return;
    Forwarder forwarder(*this, callback);
    container_->EnumerateProperties(forwarder);
}

host::IGameProperty* MaxProperties::of(::IGameProperty* property) {
    if (property == nullptr) return nullptr;
    auto& made = made_[property];
    if (!made) made = std::make_unique<MaxProperty>(*property, texmaps_);
    return made.get();
}

}  // namespace velinor
