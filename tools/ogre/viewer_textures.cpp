#include "tools/ogre/viewer_textures.h"

#include <OgreImage.h>
#include <OgreTextureManager.h>

#include <array>
#include <vector>

namespace velinor {
namespace {

struct StandIn {
    const char* unit;
    std::array<Ogre::uchar, 4> colour;  // red, green, blue, alpha
};

// The last one is for every other unit.
constexpr std::array kStandIns{
    StandIn{"normal_map", {127, 127, 255, 255}}, StandIn{"roughness_map", {160, 160, 160, 255}},
    StandIn{"metallic_map", {0, 0, 0, 255}},     StandIn{"diffuse_map", {190, 190, 190, 255}},
    StandIn{"", {255, 255, 255, 255}},
};
constexpr StandIn kCube{"cube", {120, 130, 140, 255}};

std::string textureName(const StandIn& standIn) {
    return std::string("viewer/") + standIn.unit;
}

void makeTexture(const StandIn& standIn, std::size_t faces) {
    constexpr Ogre::uint32 kSide = 4;
    std::vector<Ogre::uchar> pixels;
    for (std::size_t i = 0; i < faces * kSide * kSide; ++i)
        pixels.insert(pixels.end(), standIn.colour.begin(), standIn.colour.end());
    Ogre::Image image;
    constexpr bool kFreePixels = false;
    image.loadDynamicImage(pixels.data(), kSide, kSide, 1, Ogre::PF_BYTE_RGBA, kFreePixels, faces);
    Ogre::TextureManager::getSingleton().loadImage(textureName(standIn), Ogre::RGN_DEFAULT, image,
                                                   faces == 6 ? Ogre::TEX_TYPE_CUBE_MAP : Ogre::TEX_TYPE_2D);
}

}  // namespace

void makeStandInTextures() {
    for (const StandIn& standIn : kStandIns)
        makeTexture(standIn, 1);
    makeTexture(kCube, 6);
}

std::string standInTexture(const std::string& unit, bool isCube) {
    if (isCube) return textureName(kCube);
    for (const StandIn& standIn : kStandIns) {
        if (unit == standIn.unit) return textureName(standIn);
    }
    return textureName(kStandIns.back());
}

}  // namespace velinor
