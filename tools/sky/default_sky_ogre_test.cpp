// The default sky as OGRE's own reader sees it.
#include <OgreDataStream.h>
#include <OgreImage.h>
#include <OgreLogManager.h>
#include <OgreRoot.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tools/sky/cube_map.h"
#include "tools/sky/default_sky.h"
#include "tools/sky/sky_colour.h"
#include "tools/sky/srgb.h"

namespace velinor {
namespace {

class DefaultSkyInOgre : public testing::Test {
  protected:
    DefaultSkyInOgre() {
        std::ifstream file(TOLVEX_DEFAULT_SKY, std::ios::binary);
        image_.load(Ogre::DataStreamPtr(OGRE_NEW Ogre::FileStreamDataStream(&file, false)), "dds");
    }

    // Keeps OGRE from writing a log file; it must be there before the root is.
    struct QuietLog {
        Ogre::LogManager manager;
        QuietLog() { manager.createLog("none", true, false, true); }
    };
    QuietLog log_;
    Ogre::Root root_{"", "", ""};
    Ogre::Image image_;
};

TEST_F(DefaultSkyInOgre, IsACubeMapWithAllItsMipmaps) {
    EXPECT_TRUE(image_.hasFlag(Ogre::IF_CUBEMAP));
    EXPECT_EQ(image_.getNumFaces(), 6U);
    EXPECT_EQ(image_.getWidth(), 256U);
    EXPECT_EQ(image_.getHeight(), 256U);
    EXPECT_EQ(image_.getNumMipmaps(), 8U);
}

TEST_F(DefaultSkyInOgre, ShowsTheSkyOnEachFace) {
    for (int face = 0; face < kCubeFaces; ++face) {
        for (const int row : {20, 90, 200}) {
            for (const int column : {10, 128, 250}) {
                const CubePlace place{face, (2.0 * column + 1) / kDefaultSkySize - 1,
                                      (2.0 * row + 1) / kDefaultSkySize - 1};
                const Rgb light = skyColour(normalised(directionAt(place)));
                const Ogre::ColourValue texel = image_.getPixelBox(face, 0).getColourAt(column, row, 0);
                EXPECT_NEAR(255 * texel.r, toSrgb(light[0]), 6) << face << " " << row << " " << column;
                EXPECT_NEAR(255 * texel.g, toSrgb(light[1]), 6) << face << " " << row << " " << column;
                EXPECT_NEAR(255 * texel.b, toSrgb(light[2]), 6) << face << " " << row << " " << column;
            }
        }
    }
}

}  // namespace
}  // namespace velinor
