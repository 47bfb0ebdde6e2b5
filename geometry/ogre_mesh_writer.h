// Mesh files in the Ogre XML format, from which the converter makes binary ones.
//
//     <?xml version="1.0"?>
//     <mesh>
//         <sharedgeometry vertexcount="24">
//             <vertexbuffer binormals="false" ... texture_coords="1">
//                 <vertex>                                  one for each vertex of the list
//                     <position x="0.000000" y="0.000000" z="0.000000" />
//                     <normal x="0.000000" y="1.000000" z="0.000000" />
//                     <texcoord u="0.000000" v="0.000000" />     one for each map channel
//                 </vertex>
//             </vertexbuffer>
//         </sharedgeometry>
//         <submeshes>
//             <submesh material="Brick" operationtype="triangle_list" use32bitindexes="True" ...>
//                 <faces count="12">
//                     <face v1="0" v2="1" v3="2" />
//                 </faces>
//             </submesh>
//         </submeshes>
//         <submeshnames>
//             <submeshname index="0" name="Brick" />        by material ID, used or not
//         </submeshnames>
//     </mesh>
//
// with one tab a level.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "base/progress.h"
#include "base/report.h"
#include "host/core.h"
#include "materials/material_map.h"
#include "plugin/export_settings.h"

namespace velinor {

// What the mesh writer works with. Nothing is owned.
struct MeshWriterContext {
    const std::filesystem::path& resourcesFolder;
    const ExportSettings& settings;
    host::Host& host;
    MaterialMap& materialMap;  // filled with what the meshes use
    Report& report;
    Progress& progress;  // kProgressPerMesh units a mesh
};

inline constexpr std::uint64_t kProgressPerMesh = 1000;

// Writes the mesh of `node` to "BASENAME.mesh.xml" in the resources folder. Always true: a mesh that the host
// cannot give as triangles, and a file that cannot be written, are told in the report.
bool writeOgreMesh(const MeshWriterContext& context, host::IGameNode& node, const std::string& baseName);

}  // namespace velinor
