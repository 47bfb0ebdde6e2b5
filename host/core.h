// The host's services that belong to no node: what the SDK offers as global functions.
#pragma once

#include <cstdint>
#include <string>

#include "host/node.h"
#include "host/scene.h"
#include "host/text.h"
#include "host/time.h"

namespace velinor::host {

// What kind of file is looked for; the numbers are the host's.
enum class AssetType { kOtherAsset = 0, kBitmapAsset = 1, kXRefAsset = 2 };

// Finds files that scenes name.
class IFileResolutionManager {
  public:
    virtual ~IFileResolutionManager() = default;

    // Replaces `filePath` by the full path of the file that the host finds for it: true. False where it finds
    // none, and `filePath` stays as it was.
    virtual bool GetFullFilePath(std::u16string& filePath, AssetType type) const = 0;
};

// A running host, as the exporter sees it. The host owns everything that it gives.
class Host {
  public:
    virtual ~Host() = default;

    // The scene interface, one for each host; never null.
    virtual IGameScene* GetIGameInterface() = 0;

    virtual IInstanceMgr* GetInstanceMgr() = 0;

    // The scene's animation range.
    virtual Interval GetAnimRange() const = 0;

    // Whether the file or folder of that name exists, seen from the host.
    virtual bool DoesFileExist(HostText file) const = 0;

    // Null where the host cannot resolve files.
    virtual IFileResolutionManager* GetFileResolutionManager() = 0;

    // Pauses the calling thread for that many milliseconds.
    virtual void Sleep(std::uint32_t milliseconds) = 0;
};

}  // namespace velinor::host
