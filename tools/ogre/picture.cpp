#include "tools/ogre/picture.h"

#include <OgreHardwarePixelBuffer.h>
#include <OgreImage.h>
#include <OgreRenderTexture.h>
#include <OgreTextureManager.h>
#include <OgreViewport.h>

#include <vector>

namespace velinor {

void savePicture(Ogre::Camera* camera, const Ogre::ColourValue& background, const RenderOptions& options) {
    constexpr int kLevels = 0;
    constexpr bool kIsGammaCorrected = false;
    const Ogre::TexturePtr texture = Ogre::TextureManager::getSingleton().createManual(
        "viewer/picture", Ogre::RGN_DEFAULT, Ogre::TEX_TYPE_2D, options.width, options.height, kLevels,
        Ogre::PF_BYTE_RGBA, Ogre::TU_RENDERTARGET, nullptr, kIsGammaCorrected, options.samples);
    Ogre::RenderTarget* target = texture->getBuffer()->getRenderTarget();
    target->setAutoUpdated(false);
    Ogre::Viewport* viewport = target->addViewport(camera);
    viewport->setBackgroundColour(background);
    viewport->setOverlaysEnabled(false);
    target->update();

    constexpr std::size_t kBytesAPixel = 3;
    std::vector<Ogre::uchar> pixels(std::size_t{options.width} * options.height * kBytesAPixel);
    const Ogre::PixelBox box(options.width, options.height, 1, Ogre::PF_BYTE_RGB, pixels.data());
    target->copyContentsToMemory(Ogre::Box(0, 0, options.width, options.height), box);
    Ogre::Image image;
    image.loadDynamicImage(pixels.data(), options.width, options.height, Ogre::PF_BYTE_RGB);
    image.save(options.picture.string());
    target->removeAllViewports();
}

}  // namespace velinor
