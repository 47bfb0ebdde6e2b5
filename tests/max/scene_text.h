// All that an export can see of a scene, as text.
#pragma once

#include <string>

#include "host/core.h"

namespace velinor {

// Line by line, numbers with all their bits. Two hosts with equal texts export alike.
std::string sceneText(host::Host& host);

}  // namespace velinor
