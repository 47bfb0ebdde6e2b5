// A host over a scene snapshot: the exporter's view of a scene that is one value.
#pragma once

#include <filesystem>
#include <memory>

#include "host/core.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// Makes a host of `scene`, which must outlive it and satisfy checkSnapshot. Relative bitmap names and asset
// folders are meant against `folder`, the folder of the file that the scene came from.
std::unique_ptr<host::Host> makeSnapshotHost(const SceneSnapshot& scene, const std::filesystem::path& folder);

}  // namespace velinor
