// What a camera sees, as a file.
#pragma once

#include <OgreCamera.h>

#include "tools/ogre/render_options.h"

namespace velinor {

// Draws one frame off screen and writes it as PNG. Throws Ogre::Exception.
void savePicture(Ogre::Camera* camera, const Ogre::ColourValue& background, const RenderOptions& options);

}  // namespace velinor
