#include "tools/ogre/render_session.h"

#include <OgreRenderSystem.h>
#include <OgreRenderWindow.h>

#include <cstdlib>

#include "tools/ogre/headless_ogre.h"

namespace velinor {
namespace {

constexpr const char* kAdvice = "; run the program under \"xvfb-run -a\"";

void openWindow(Ogre::Root& root) {
    loadOgrePlugin(root, "RenderSystem_GL3Plus");
    loadOgrePlugin(root, "Codec_FreeImage");
    root.setRenderSystem(root.getAvailableRenderers().at(0));
    constexpr bool kMakesWindow = false;
    root.initialise(kMakesWindow);
    const Ogre::NameValuePairList hidden{{"hidden", "true"}};
    constexpr bool kIsFullScreen = false;
    root.createRenderWindow("hidden", 1, 1, kIsFullScreen, &hidden);
}

}  // namespace

RenderSession::RenderSession(const Tell& tell) : log_(tell, [](const std::string&) {}), root_("", "", "") {
    if (std::getenv("DISPLAY") == nullptr)
        throw DisplayError(std::string("there is no display (DISPLAY is not set)") + kAdvice);
    try {
        openWindow(root_);
    } catch (const Ogre::Exception& error) {
        // The text is copied while Root lives: it can point into a plug-in that Root is about to unload.
        throw DisplayError("OpenGL cannot be used: " + error.getDescription() + kAdvice);
    }
}

}  // namespace velinor
