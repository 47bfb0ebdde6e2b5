// A host over a scene snapshot: the exporter's view of a scene that is one value.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

#include "host/core.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// What the host does when it is asked to pause for that many milliseconds.
using SleepFunction = std::function<void(std::uint32_t milliseconds)>;

// Makes a host of `scene`, which must outlive it and satisfy checkSnapshot. Relative bitmap names and asset
// folders are meant against `folder`, the folder of the file that the scene came from. Without `sleep` the
// host's pauses take no time.
std::unique_ptr<host::Host> makeSnapshotHost(const SceneSnapshot& scene, const std::filesystem::path& folder,
                                             SleepFunction sleep = {});

}  // namespace velinor
