// Choosing nodes of a scene by their names.
#pragma once

#include <span>
#include <string>

#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// Marks as selected, besides those that are, the nodes that fit one of the patterns (see NameGlob) and all
// nodes below them. A node fits by its whole name, or by its name without parameters: "Chair [color: red]" is
// also "Chair". Throws CommandError (kNotRun) for a pattern that is malformed or that no node fits, and
// changes nothing then.
void selectNodes(SceneSnapshot& scene, std::span<const std::string> patterns);

}  // namespace velinor
