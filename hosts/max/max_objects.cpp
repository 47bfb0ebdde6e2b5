#include "hosts/max/max_objects.h"

#include <algorithm>
#include <limits>

#include "hosts/max/max_properties.h"
#include "hosts/max/max_values.h"

namespace velinor {
namespace {

// The name by which scripts know the class, the same in every language of the host.
host::HostText objectNameOf(const ::Object& object) {
    constexpr bool kLocalized = false;
    return hostText(object.GetObjectName(kLocalized));
}

// The whole object in its own space, whatever part of it is selected.
host::Box3 boxOf(::Object& object, host::TimeValue t) {
    constexpr BOOL kOnlySelected = 0;
    ::Box3 box;
    object.GetDeformBBox(t, box, nullptr, kOnlySelected);
    return {hostPoint(box.Min()), hostPoint(box.Max())};
}

::LightObject* asLight(::Object* object) {
    const bool isLight = object != nullptr && object->SuperClassID() == LIGHT_CLASS_ID;
    return isLight ? static_cast<::LightObject*>(object) : nullptr;
}

// What every type of object answers. `GameInterface` is IGameObject or IGameMesh, `MaxInterface` the SDK's.
template <class GameInterface, class MaxInterface>
class GameObject : public GameInterface {
  public:
    GameObject(MaxInterface& object, ::INode* node, MaxTexmaps& texmaps)
        : object_(object), node_(node), texmaps_(texmaps) {}

    std::int32_t GetIGameType() const override { return object_.GetIGameType(); }
    bool InitializeData() override { return object_.InitializeData(); }

    host::Object* GetMaxObject() override {
        if (!maxObject_) maxObject_.emplace(object_.GetMaxObject(), node_);
        return &*maxObject_;
    }

    host::IPropertyContainer* GetIPropertyContainer() override {
        ::IPropertyContainer* container = properties_ ? nullptr : object_.GetIPropertyContainer();
        if (container != nullptr) properties_.emplace(container, texmaps_);
        return properties_ ? &*properties_ : nullptr;
    }

  protected:
    MaxInterface& object_;

  private:
    ::INode* node_;
    MaxTexmaps& texmaps_;
    std::optional<MaxObject> maxObject_;
    std::optional<MaxProperties> properties_;
};

class GameMesh final : public GameObject<host::IGameMesh, ::IGameMesh> {
  public:
    using GameObject::GameObject;

    std::int32_t GetNumberOfFaces() const override { return object_.GetNumberOfFaces(); }

    std::vector<int> GetActiveMatIDs() const override {
        const Tab<int> given = object_.GetActiveMatIDs();
        std::vector<int> ids;
        ids.reserve(static_cast<std::size_t>(std::max(given.Count(), 0)));
        for (int i = 0; i < given.Count(); ++i)
            ids.push_back(given[i]);
        return ids;
    }
};

}  // namespace

host::HostText MaxTriObject::GetObjectName() const {
    return objectNameOf(*object_);
}

host::Box3 MaxTriObject::GetDeformBBox(host::TimeValue t) const {
    return boxOf(*object_, t);
}

host::Mesh& MaxTriObject::GetMesh() {
    if (!mesh_) mesh_.emplace(object_->GetMesh());
    return *mesh_;
}

void MaxTriObject::DeleteThis() {
    owner_.endTriObject();
}

host::HostText MaxObject::GetObjectName() const {
    return object_ == nullptr ? host::HostText() : objectNameOf(*object_);
}

host::Box3 MaxObject::GetDeformBBox(host::TimeValue t) const {
    return object_ == nullptr ? host::Box3{{}, {}} : boxOf(*object_, t);
}

host::TriObject* MaxObject::ConvertToTriObject(host::TimeValue t) {
    const Class_ID triangles(TRIOBJ_CLASS_ID, 0);
    triObject_.reset();
    if (object_ == nullptr || object_->CanConvertToType(triangles) == 0) return nullptr;
    ::Object* converted = object_->ConvertToType(t, triangles);
    if (converted == nullptr) return nullptr;
    triObject_ =
        std::make_unique<MaxTriObject>(static_cast<::TriObject&>(*converted), converted != object_, *this);
    return triObject_.get();
}

::LightObject* MaxObject::lightAt(host::TimeValue t) const {
    ::LightObject* light = asLight(object_);
    if (light != nullptr || node_ == nullptr) return light;
    return asLight(node_->EvalWorldState(t).obj);
}

host::LightState MaxObject::EvalLightState(host::TimeValue t) const {
    ::LightObject* light = lightAt(t);
    if (light == nullptr) return {};
    ::Interval valid(std::numeric_limits<::TimeValue>::min(), std::numeric_limits<::TimeValue>::max());
    ::LightState state{};
    light->EvalLightState(t, valid, &state);
    return {
        static_cast<std::int32_t>(state.type), {state.color.r, state.color.g, state.color.b}, state.intens};
}

std::unique_ptr<host::IGameObject> makeMaxGameObject(::IGameObject& object, ::INode* node,
                                                     MaxTexmaps& texmaps) {
    using PlainObject = GameObject<host::IGameObject, ::IGameObject>;
    if (object.GetIGameType() != ::IGameObject::IGAME_MESH)
        return std::make_unique<PlainObject>(object, node, texmaps);
    return std::make_unique<GameMesh>(static_cast<::IGameMesh&>(object), node, texmaps);
}

}  // namespace velinor
