// Scenes on their way between two processes of the command.
#pragma once

#include <string>
#include <string_view>

#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// The scene as bytes: a snapshot in CBOR, but each list of instances once with the nodes that share it. A
// snapshot repeats the list at each of them, so that a group of n instances takes n * n references.
std::string packedScene(SceneSnapshot scene);

// The scene that was packed, in any lists that its nodes may share. `name` is the scene's in messages. Throws
// SceneError where the bytes are not those of a packed scene, or not of one that keeps the rules of
// snapshots.
SceneSnapshot unpackedScene(std::string_view bytes, std::string_view name);

}  // namespace velinor
