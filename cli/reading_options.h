// What the user may say about the reading of a scene, whatever command reads it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "hosts/assimp/assimp_reader.h"
#include "platform/isolated_run.h"

namespace velinor {

struct ReadingOptions {
    std::vector<std::filesystem::path> assetFolders = {};  // further places of bitmaps, as given
    std::optional<UpAxis> upAxis = {};                     // of files of formats that do not state one
    std::vector<std::string> selected = {};  // patterns of the names of nodes to be selected (see NameGlob)
    IsolationLimits importLimits = {};       // of the process that reads with a foreign library

    bool operator==(const ReadingOptions&) const = default;
};

}  // namespace velinor
