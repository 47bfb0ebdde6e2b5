// The objects of nodes.
#pragma once

#include <cstdint>
#include <vector>

#include "host/geometry.h"
#include "host/mesh.h"
#include "host/property.h"
#include "host/text.h"
#include "host/time.h"

namespace velinor::host {

class TriObject;

// An object of the host, whatever its type. Owned by the scene unless a conversion made it.
class Object {
  public:
    virtual ~Object() = default;

    // The name text of the object's class, e.g. "Sun Positioner".
    virtual HostText GetObjectName() const = 0;

    // The box of the whole object in object space at time `t`.
    virtual Box3 GetDeformBBox(TimeValue t) const = 0;

    // The object as a triangle object at time `t`; null where it cannot be one. A result other than this
    // object itself is new, and the caller ends it with TriObject::DeleteThis.
    virtual TriObject* ConvertToTriObject(TimeValue t) = 0;
};

// An object that holds a triangle mesh.
class TriObject : public Object {
  public:
    virtual Mesh& GetMesh() = 0;

    // Ends an object that a conversion made; all that came from it becomes invalid.
    virtual void DeleteThis() = 0;
};

enum LightType : std::int32_t { OMNI_LGT = 0, SPOT_LGT = 1, DIRECT_LGT = 2, AMBIENT_LGT = 3 };

// What a light gives off. `type` may be a number that LightType does not name.
struct LightState {
    std::int32_t type = OMNI_LGT;
    Point3 color{1, 1, 1};  // linear red, green, blue, nominally 0 to 1
    float intens = 1;       // multiplier of the colour

    bool operator==(const LightState&) const = default;
};

// The object of a light.
class LightObject : public Object {
  public:
    virtual LightState EvalLightState(TimeValue t) const = 0;
};

// The scene interface's view of a node's object: its type, and the way to the rest.
class IGameObject {
  public:
    enum ObjectTypes : std::int32_t {
        IGAME_UNKNOWN = 0,
        IGAME_LIGHT = 1,
        IGAME_MESH = 2,
        IGAME_SPLINE = 3,
        IGAME_CAMERA = 4,
        IGAME_HELPER = 5,
        IGAME_BONE = 6,
    };

    virtual ~IGameObject() = default;

    // The type code; hosts know more than ObjectTypes names.
    virtual std::int32_t GetIGameType() const = 0;

    // The host object, never null. For IGAME_LIGHT it is a LightObject.
    virtual Object* GetMaxObject() = 0;

    // Prepares the object for reading geometry and materials. False where the host cannot.
    virtual bool InitializeData() = 0;

    // The parameter block's values by name; null where the object has none.
    virtual IPropertyContainer* GetIPropertyContainer() = 0;
};

// The scene interface's view of a mesh; what IGAME_MESH objects are.
class IGameMesh : public IGameObject {
  public:
    // The face count as the host reports it: any 32-bit integer.
    virtual std::int32_t GetNumberOfFaces() const = 0;

    // The material IDs that faces use, in the host's order.
    virtual std::vector<int> GetActiveMatIDs() const = 0;
};

}  // namespace velinor::host
