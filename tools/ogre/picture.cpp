#include "tools/ogre/picture.h"

#include <OgreHardwarePixelBuffer.h>
#include <OgreImage.h>
#include <OgreRenderTexture.h>
#include <OgreTextureManager.h>
#include <OgreViewport.h>

namespace velinor {
namespace {

constexpr unsigned kBytesAPixel = 3;

std::vector<std::uint8_t> readBack(Ogre::RenderTarget& target, unsigned width, unsigned height) {
    std::vector<std::uint8_t> pixels(std::size_t{width} * height * kBytesAPixel);
    const Ogre::PixelBox box(width, height, 1, Ogre::PF_BYTE_RGB, pixels.data());
    target.copyContentsToMemory(Ogre::Box(0, 0, width, height), box);
    return pixels;
}

}  // namespace

Picture drawPicture(Ogre::Camera* camera, const Ogre::ColourValue& background, unsigned width,
                    unsigned height) {
    constexpr int kLevels = 0;
    auto& textures = Ogre::TextureManager::getSingleton();
    const Ogre::TexturePtr texture =
        textures.createManual("viewer/picture", Ogre::RGN_DEFAULT, Ogre::TEX_TYPE_2D, width, height, kLevels,
                              Ogre::PF_BYTE_RGBA, Ogre::TU_RENDERTARGET);
    Ogre::RenderTarget* target = texture->getBuffer()->getRenderTarget();
    target->setAutoUpdated(false);
    Ogre::Viewport* viewport = target->addViewport(camera);
    viewport->setBackgroundColour(background);
    viewport->setOverlaysEnabled(false);
    target->update();
    Picture picture{width, height, readBack(*target, width, height)};
    target->removeAllViewports();
    textures.remove(texture);
    return picture;
}

Picture shrink(const Picture& picture, unsigned factor) {
    Picture small{picture.width / factor, picture.height / factor, {}};
    small.pixels.reserve(std::size_t{small.width} * small.height * kBytesAPixel);
    const std::size_t row = std::size_t{picture.width} * kBytesAPixel;
    const auto meanAt = [&](std::size_t first) {
        unsigned sum = 0;
        for (std::size_t y = 0; y < factor; ++y) {
            for (std::size_t x = 0; x < factor; ++x)
                sum += picture.pixels[first + y * row + x * kBytesAPixel];
        }
        return static_cast<std::uint8_t>((sum + factor * factor / 2) / (factor * factor));
    };
    for (std::size_t y = 0; y < small.height; ++y) {
        for (std::size_t x = 0; x < small.width; ++x) {
            for (std::size_t channel = 0; channel < kBytesAPixel; ++channel)
                small.pixels.push_back(meanAt(y * factor * row + x * factor * kBytesAPixel + channel));
        }
    }
    return small;
}

void savePicture(const Picture& picture, const std::filesystem::path& file) {
    std::vector<std::uint8_t> pixels = picture.pixels;  // OGRE asks for bytes that it may change
    Ogre::Image image;
    image.loadDynamicImage(pixels.data(), picture.width, picture.height, Ogre::PF_BYTE_RGB);
    image.save(file.string());
}

}  // namespace velinor
