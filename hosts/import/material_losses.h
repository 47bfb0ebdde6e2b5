// What materials have and a package cannot express, told once a kind.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "hosts/import/import_notes.h"

namespace velinor {

enum class MaterialLoss {
    movedTexture,
    otherTextureSet,
    layeredTextures,
    occlusionMap,
    opacityMap,
    specularColour,
    emissionColour,
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
    struct Materials {
        std::size_t count = 0;
        std::vector<std::string> first;
    };
    std::map<MaterialLoss, Materials> byKind_;
};

}  // namespace velinor
