// The Sun Positioner: a light whose direction comes from its own parameters.
#pragma once

#include "host/gmatrix.h"
#include "host/object.h"

namespace velinor {

// Whether the object is a Sun Positioner, by its class's name text.
bool isSunPositioner(const host::Object& object);

// The orientation of a Sun Positioner as the scene descriptor writes it, of length 1. `rotation` is the
// rotation of the node's package matrix relative to its parent. Parameters that the object lacks count as 0
// degrees.
host::Quat sunPositionerOrientation(host::IGameObject& object, const host::GMatrix& rotation);

}  // namespace velinor
