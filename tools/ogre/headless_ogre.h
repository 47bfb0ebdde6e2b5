// OGRE without a render system and without a display.
#pragma once

#include <OgreDefaultHardwareBufferManager.h>
#include <OgreGpuProgramManager.h>
#include <OgreRoot.h>
#include <OgreTextureManager.h>

#include <filesystem>
#include <string_view>

#include "tools/ogre/ogre_messages.h"
#include "tools/ogre/uniform_program.h"

namespace velinor {

// What OGRE needs to read scripts, meshes and images into memory. One at a time in a process. Everything that
// is parsed is in the resource group "General".
class HeadlessOgre {
  public:
    // `critical` gets what OGRE logs as an error.
    explicit HeadlessOgre(OgreLog::Take critical);
    ~HeadlessOgre();
    HeadlessOgre(const HeadlessOgre&) = delete;
    HeadlessOgre& operator=(const HeadlessOgre&) = delete;

    // Parses the program declarations of `folder`, so that material scripts can refer to the programs. Throws
    // Ogre::Exception.
    void loadPrograms(const std::filesystem::path& folder);

    // Adds codecs for all image formats that Debian's OGRE knows. Throws Ogre::Exception.
    void loadImageCodecs();

  private:
    OgreLog log_;  // before Root, which would write a log file
    Ogre::Root root_;
    Ogre::DefaultHardwareBufferManager buffers_;
    Ogre::DefaultTextureManager textures_;
    Ogre::GpuProgramManager programs_;
    UniformProgramFactory factory_;
};

// A stream over bytes that outlive it, under a name that messages can give.
Ogre::DataStreamPtr streamOver(const std::string& name, std::string_view bytes);

// Loads a plug-in of the system's OGRE: "Codec_FreeImage". Throws Ogre::Exception.
void loadOgrePlugin(Ogre::Root& root, const std::string& name);

}  // namespace velinor
