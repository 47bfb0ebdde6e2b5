// What a camera sees, as pixels and as a file.
#pragma once

#include <OgreCamera.h>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace velinor {

// Rows from the top, three bytes a pixel: red, green, blue.
struct Picture {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<std::uint8_t> pixels;
};

// Draws one frame off screen. Throws Ogre::Exception.
Picture drawPicture(Ogre::Camera* camera, const Ogre::ColourValue& background, unsigned width,
                    unsigned height);

// The mean of each square of `factor` times `factor` pixels; width and height are multiples of it.
Picture shrink(const Picture& picture, unsigned factor);

// Writes a PNG file. Throws Ogre::Exception.
void savePicture(const Picture& picture, const std::filesystem::path& file);

}  // namespace velinor
