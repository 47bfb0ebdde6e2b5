// Nodes that share one object: one of each group is the master, whose mesh file all use.
#pragma once

#include <string>

#include "host/node.h"

namespace velinor {

// Whether the node is the last entry of the host's list of its instances. Throws host::TabOutOfRangeException
// where the list is empty.
bool isInstanceMaster(const host::IInstanceMgr& instances, host::IGameNode& node);

// The name of the last entry of that list, by its low bytes. Throws as isInstanceMaster does.
std::string instanceMasterName(const host::IInstanceMgr& instances, host::IGameNode& node);

}  // namespace velinor
