// Reads the elements of a snapshot's lists from the values of a document. Each throws SceneError where the
// value breaks a rule that can be seen in it alone; checkSnapshot sees to the others.
#pragma once

#include "hosts/snapshot/document_value.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// `previous`, where given, is the latest list of instances read: an equal one is shared instead of kept
// twice.
SnapshotNode readNode(const Value& value, const std::optional<InstanceList>& previous);
SnapshotMesh readMesh(const Value& value);
SnapshotMaterial readMaterial(const Value& value);
SnapshotMap readMap(const Value& value);

}  // namespace velinor
