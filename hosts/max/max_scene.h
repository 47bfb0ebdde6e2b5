// The scene of 3ds Max.
#pragma once

#include "hosts/max/max_sdk.h"

#include "host/scene.h"
#include "hosts/max/max_nodes.h"

namespace velinor {

// The scene interface, in the host's own axes and at frame 0. Released at the end of its life at the latest.
class MaxScene final : public host::IGameScene {
  public:
    MaxScene() : instances_(nodes_) {}
    MaxScene(const MaxScene&) = delete;
    MaxScene& operator=(const MaxScene&) = delete;
    ~MaxScene() override;

    // Releases what an earlier call has enumerated. Where the host cannot enumerate its scene, it is empty.
    bool InitialiseIGame(bool selected) override;
    int GetTotalNodeCount() const override;
    int GetTopLevelNodeCount() const override;
    host::IGameNode* GetTopLevelNode(int index) const override;

    host::IInstanceMgr& instances() { return instances_; }

    // Gives everything back to the host. All that came from here is invalid then.
    void release();

  private:
    ::IGameScene* scene_ = nullptr;  // null: not enumerated
    mutable MaxNodes nodes_;         // what operations that are const give can change
    MaxInstances instances_;
};

}  // namespace velinor
