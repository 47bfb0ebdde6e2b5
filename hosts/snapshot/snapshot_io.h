// Scene snapshots as files, in JSON and in CBOR. docs/scene-snapshot.md describes the format.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

enum class SnapshotEncoding { json, cbor };

// The encoding of `bytes`: JSON where the first character that is no white space is "{", otherwise CBOR.
SnapshotEncoding guessSnapshotEncoding(std::string_view bytes);

// The scene in `bytes`. `file` names their origin in messages ("room.scene.json"). Throws SceneError where
// the document breaks a rule of the format; the message holds the file, the place as a JSON pointer and what
// is wrong.
SceneSnapshot readSnapshot(std::string_view bytes, SnapshotEncoding encoding, std::string_view file);

// Checks the rules that tie the lists together: references in range, every node exactly once in the tree, no
// cycle, lists of matching lengths. Throws SceneError as readSnapshot does. readSnapshot has called it
// already.
void checkSnapshot(const SceneSnapshot& scene, std::string_view file);

// The document of a scene. JSON comes indented, with a line for each member of a node and each flat list on
// one line. Reading it back gives an equal scene.
std::string writeSnapshot(const SceneSnapshot& scene, SnapshotEncoding encoding);

}  // namespace velinor
