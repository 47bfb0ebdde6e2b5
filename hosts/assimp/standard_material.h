// Materials with a diffuse colour, opacity and glossiness, as the host's "Standard".
#pragma once

#include "hosts/assimp/material_source.h"

namespace velinor {

// 0 transparent to 1 opaque. Of formats whose writers give opaque materials 0, that is 1.
float opacityOf(const MaterialSource& source);

// 0 to 1, as a host's "Standard" holds it, from the exponent or percentage that the format has; 0 where there
// is none.
float glossinessOf(const MaterialSource& source);

// Fills what a "Standard" has: colours, numbers and texture maps by slot, one a slot.
void fillStandard(const MaterialSource& source, SnapshotMaterial& material);

}  // namespace velinor
