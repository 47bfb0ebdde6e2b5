// OGRE with OpenGL, drawing off screen.
#pragma once

#include <OgreRoot.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "tools/ogre/ogre_messages.h"

namespace velinor {

// A place where nothing can be drawn: no display, or no OpenGL there. what() says what to do.
class DisplayError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Tells the user something about a file of the package, or about the drawing.
using Tell = std::function<void(const std::string& text)>;

class RenderSession {
  public:
    // Opens a hidden window, and with it OpenGL. `tell` gets what OGRE logs as an error. Throws DisplayError.
    explicit RenderSession(const Tell& tell);

    Ogre::Root& root() { return root_; }

  private:
    OgreLog log_;  // before Root, which would write a log file
    Ogre::Root root_;
};

}  // namespace velinor
