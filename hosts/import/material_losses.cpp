#include "hosts/import/material_losses.h"

namespace velinor {
namespace {

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
        case MaterialLoss::partialMap:
            return "maps of an amount other than 1, which are taken in full";
        case MaterialLoss::occlusionMap:
            return "ambient occlusion maps, which are left out";
        case MaterialLoss::opacityMap:
            return "opacity maps, which are left out; put opacity into the alpha channel of the colour map";
        case MaterialLoss::specularColour:
            return "specular colours or maps of their own, which are left out";
        case MaterialLoss::emissionColour:
            return "an emission colour without a map, which is left out";
        case MaterialLoss::twoSided:
            return "two sides, of which only the front is shown where the material is opaque";
        case MaterialLoss::unlit:
            return "no shading at all; they are shaded like any other";
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
    byKind_[loss].add(material);
}

void MaterialLosses::writeTo(ImportNotes& notes, const std::string& shown) const {
    for (const auto& [loss, materials] : byKind_) {
        notes.add(shown, materials.text("material", "materials") +
                             (materials.count() == 1 ? " has " : " have ") + textOf(loss));
    }
}

}  // namespace velinor
