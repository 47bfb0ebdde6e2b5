#include "hosts/import/material_losses.h"

#include "base/text.h"

namespace velinor {
namespace {

constexpr std::size_t kNamesShown = 3;

const char* textOf(MaterialLoss loss) {
    switch (loss) {
        case MaterialLoss::movedTexture:
            return "textures that are moved, turned or scaled on the surface; they lie there unmoved, so "
                   "bake "
                   "the change into the texture coordinates";
        case MaterialLoss::otherTextureSet:
            return "textures on another than the first set of texture coordinates; they take the first";
        case MaterialLoss::layeredTextures:
            return "several textures of one kind upon each other; the first is taken";
        case MaterialLoss::occlusionMap:
            return "ambient occlusion maps, which are left out";
        case MaterialLoss::opacityMap:
            return "opacity maps, which are left out; put opacity into the alpha channel of the colour map";
        case MaterialLoss::specularColour:
            return "specular colours or maps of their own, which are left out";
        case MaterialLoss::emissionColour:
            return "an emission colour without a map, which is left out";
        case MaterialLoss::clearCoat:
            return "a clear coat, which is left out";
        case MaterialLoss::sheen:
            return "a sheen, which is left out";
        case MaterialLoss::transmission:
            return "transmission of light, which is left out";
        case MaterialLoss::physicalValues:
            return "the class Physical Material, of which the file holds colour, transparency and roughness "
                   "alone; metalness becomes 0, and maps that have no name of their own are left out";
    }
    return "";
}

}  // namespace

void MaterialLosses::add(MaterialLoss loss, const std::string& material) {
    Materials& materials = byKind_[loss];
    ++materials.count;
    if (materials.first.size() < kNamesShown) materials.first.push_back(printable(material));
}

void MaterialLosses::writeTo(ImportNotes& notes, const std::string& shown) const {
    for (const auto& [loss, materials] : byKind_) {
        std::string names;
        for (const std::string& name : materials.first)
            names += (names.empty() ? "\"" : ", \"") + name + "\"";
        if (materials.count > materials.first.size()) names += ", ...";
        notes.add(shown, std::to_string(materials.count) +
                             (materials.count == 1 ? " material (" : " materials (") + names +
                             (materials.count == 1 ? ") has " : ") have ") + textOf(loss));
    }
}

}  // namespace velinor
