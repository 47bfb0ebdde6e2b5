// The scene interface.
#pragma once

#include "host/node.h"

namespace velinor::host {

// The scene of the host. Owned by the host; nodes are valid after InitialiseIGame, as long as the host keeps
// the scene.
class IGameScene {
  public:
    virtual ~IGameScene() = default;

    // Enumerates the scene, with `selected` only its selected part. False where the host cannot.
    virtual bool InitialiseIGame(bool selected) = 0;

    // The number of nodes in the whole scene; only for showing progress.
    virtual int GetTotalNodeCount() const = 0;

    virtual int GetTopLevelNodeCount() const = 0;
    virtual IGameNode* GetTopLevelNode(int index) const = 0;
};

}  // namespace velinor::host
