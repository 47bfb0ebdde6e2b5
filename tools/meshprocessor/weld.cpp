#include "tools/meshprocessor/weld.h"

#include <meshoptimizer.h>

#include <algorithm>

namespace velinor {
namespace {

bool hasEqualCorners(const Face& face) {
    return face[0] == face[1] || face[1] == face[2] || face[2] == face[0];
}

}  // namespace

TriangleMesh weld(const TriangleMesh& mesh) {
    if (mesh.faces.empty()) return {};
    const std::size_t indexCount = mesh.faces.size() * 3;
    std::vector<unsigned int> remap(mesh.points.size());
    TriangleMesh welded;
    const std::size_t count =
        meshopt_generateVertexRemap(remap.data(), mesh.faces.front().data(), indexCount, mesh.points.data(),
                                    mesh.points.size(), sizeof(Point));
    welded.points.resize(count);
    meshopt_remapVertexBuffer(welded.points.data(), mesh.points.data(), mesh.points.size(), sizeof(Point),
                              remap.data());
    welded.faces.reserve(mesh.faces.size());
    for (const Face& face : mesh.faces) {
        const Face moved{remap[face[0]], remap[face[1]], remap[face[2]]};
        if (!hasEqualCorners(moved)) welded.faces.push_back(moved);
    }
    return welded;
}

}  // namespace velinor
