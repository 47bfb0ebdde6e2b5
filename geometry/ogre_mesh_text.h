// The text of a mesh file.
#pragma once

#include "base/text_sink.h"
#include "geometry/mesh_geometry.h"
#include "geometry/mesh_materials.h"

namespace velinor {

// Writes the mesh in the form that geometry/ogre_mesh_writer.h shows. `mapChannelCount` is the host's number
// of map channels, channel 0 counted. A submesh whose ID has no material gets an empty name, in `materials`
// too.
void writeOgreMeshText(const MeshGeometry& geometry, MeshMaterials& materials, int mapChannelCount,
                       TextSink& text);

}  // namespace velinor
