#include "scene/instances.h"

#include "base/text.h"

namespace velinor {
namespace {

host::INode* masterOf(const host::IInstanceMgr& instances, host::IGameNode& node) {
    const host::INodeTab group = instances.GetInstances(*node.GetMaxNode());
    return group[group.Count() - 1];
}

}  // namespace

bool isInstanceMaster(const host::IInstanceMgr& instances, host::IGameNode& node) {
    return masterOf(instances, node) == node.GetMaxNode();
}

std::string instanceMasterName(const host::IInstanceMgr& instances, host::IGameNode& node) {
    return lowBytes(masterOf(instances, node)->GetName());
}

}  // namespace velinor
