// What materials have and a package cannot express, told once a kind.
#pragma once

#include <map>
#include <string>

#include "hosts/import/import_notes.h"
#include "hosts/import/named_count.h"

namespace velinor {

enum class MaterialLoss {
    movedTexture,
    otherTextureSet,
    layeredTextures,
    partialMap,
    occlusionMap,
    opacityMap,
    specularColour,
    emissionColour,
    twoSided,
    unlit,
    clearCoat,
    sheen,
    transmission,
    physicalValues,
};

// Counts the materials by what they lose, and keeps the first names of each kind.
class MaterialLosses {
  public:
    void add(MaterialLoss loss, const std::string& material);

    // One note a kind, about the file `shown`.
    void writeTo(ImportNotes& notes, const std::string& shown) const;

  private:
    std::map<MaterialLoss, NamedCount> byKind_;
};

}  // namespace velinor
