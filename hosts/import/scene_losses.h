// What nodes, meshes, lights and cameras of a scene file have and a package cannot express, or what is wrong
// with them, told once a kind.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "hosts/import/import_notes.h"
#include "hosts/import/named_count.h"

namespace velinor {

enum class SceneLoss {
    // of meshes
    vertexColours,
    morphTargets,
    bones,
    linesAndPoints,
    degenerateTriangles,
    infiniteTriangles,
    badTriangles,
    infiniteMapVertices,
    turnedFaces,
    manyMaterials,
    // of nodes
    noTriangles,
    otherProperties,
    reservedProperty,
    cutProperties,
    cutName,
    badTransform,
    noTransform,
    lostParent,
    ambientLight,
    volumeLight,
    unknownLight,
    brightLight,
    lightBesideMesh,
    // of lights and cameras, which have no node
    lightWithoutNode,
    cameraWithoutNode,
};

// Counts the things by what they lose, and keeps the first names of each kind.
class SceneLosses {
  public:
    // `name` (UTF-8) is that of the node, mesh, light or camera, `amount` how much of it is lost.
    void add(SceneLoss loss, std::string_view name, std::uint64_t amount = 1);

    // One note a kind, about the file `shown`.
    void writeTo(ImportNotes& notes, const std::string& shown) const;

  private:
    struct Things {
        NamedCount names;
        std::uint64_t amount = 0;
    };
    std::map<SceneLoss, Things> byKind_;
};

}  // namespace velinor
