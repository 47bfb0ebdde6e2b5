// How a snapshot host finds files: docs/scene-snapshot.md, "Files".
#pragma once

#include <filesystem>
#include <vector>

#include "host/core.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

class SnapshotHostFiles final : public host::IFileResolutionManager {
  public:
    // Relative names and asset folders are meant against `folder`; an empty one is the current folder.
    SnapshotHostFiles(const std::vector<std::u16string>& assetFolders, const std::filesystem::path& folder);

    // Whether the file or folder exists. Never throws: a name that the system cannot take does not exist.
    bool exists(host::HostText file) const;

    // The kind of file makes no difference.
    bool GetFullFilePath(std::u16string& filePath, host::AssetType type) const override;

  private:
    std::filesystem::path folder_;                 // absolute
    std::vector<std::filesystem::path> searched_;  // absolute, in order
};

}  // namespace velinor
