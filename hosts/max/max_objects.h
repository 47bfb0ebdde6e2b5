// Objects of 3ds Max: the host's own, triangle objects among them, and the scene interface's view of them.
#pragma once

#include "hosts/max/max_sdk.h"

#include <memory>
#include <optional>

#include "host/object.h"
#include "hosts/max/max_mesh.h"
#include "hosts/max/max_texmaps.h"

namespace velinor {

class MaxObject;

// A triangle object. One that a conversion made is ended with this.
class MaxTriObject final : public host::TriObject {
  public:
    MaxTriObject(::TriObject& object, bool isNew, MaxObject& owner)
        : object_(&object, Ending{isNew}), owner_(owner) {}

    host::HostText GetObjectName() const override;
    host::Box3 GetDeformBBox(host::TimeValue t) const override;
    host::TriObject* ConvertToTriObject(host::TimeValue /*t*/) override { return this; }
    host::Mesh& GetMesh() override;
    void DeleteThis() override;

  private:
    struct Ending {
        bool isNew;
        void operator()(::TriObject* object) const {
            if (isNew) object->DeleteThis();
        }
    };

    std::unique_ptr<::TriObject, Ending> object_;
    MaxObject& owner_;
    std::optional<MaxMesh> mesh_;
};

// Any object of the host. It is a light to the exporter, whatever it is to the host: one that the host cannot
// evaluate as a light is white.
class MaxObject final : public host::LightObject {
  public:
    // Both may be null. An object without name and box stands for none. A light whose object is hidden behind
    // modifiers is found through its node.
    MaxObject(::Object* object, ::INode* node) : object_(object), node_(node) {}

    host::HostText GetObjectName() const override;
    host::Box3 GetDeformBBox(host::TimeValue t) const override;
    host::TriObject* ConvertToTriObject(host::TimeValue t) override;
    host::LightState EvalLightState(host::TimeValue t) const override;

    // Ends what ConvertToTriObject gave.
    void endTriObject() { triObject_.reset(); }

  private:
    ::LightObject* lightAt(host::TimeValue t) const;

    ::Object* object_;
    ::INode* node_;
    std::unique_ptr<MaxTriObject> triObject_;
};

// The scene interface's view of an object: an IGameMesh where the type says mesh. `node` may be null.
// Everything outlives the result.
std::unique_ptr<host::IGameObject> makeMaxGameObject(::IGameObject& object, ::INode* node,
                                                     MaxTexmaps& texmaps);

}  // namespace velinor
