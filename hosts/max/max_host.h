// 3ds Max as the exporter's host.
#pragma once

#include "hosts/max/max_sdk.h"

#include "host/core.h"
#include "hosts/max/max_scene.h"

namespace velinor {

// Finds files by the host's search paths.
class MaxFiles final : public host::IFileResolutionManager {
  public:
    bool GetFullFilePath(std::u16string& filePath, host::AssetType type) const override;
};

// The running 3ds Max. To be used on its main thread.
class MaxHost final : public host::Host {
  public:
    host::IGameScene* GetIGameInterface() override { return &scene_; }
    host::IInstanceMgr* GetInstanceMgr() override { return &scene_.instances(); }
    host::Interval GetAnimRange() const override;
    bool DoesFileExist(host::HostText file) const override;
    host::IFileResolutionManager* GetFileResolutionManager() override;
    void Sleep(std::uint32_t milliseconds) override;

    // Ends an export: gives the scene back. All that came from here is invalid then.
    void release() { scene_.release(); }

  private:
    MaxScene scene_;
    MaxFiles files_;
};

}  // namespace velinor
