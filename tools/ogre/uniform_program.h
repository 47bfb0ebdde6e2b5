// A GPU program that is never compiled but knows the uniforms of its source, for OGRE without a render
// system.
#pragma once

#include <OgreHighLevelGpuProgramManager.h>

namespace velinor {

// Makes such programs for the language "glsl". With it, OGRE finds parameters in material scripts that their
// program does not have, which it does otherwise only where a render system supports the program.
class UniformProgramFactory : public Ogre::HighLevelGpuProgramFactory {
  public:
    const Ogre::String& getLanguage() const override;
    Ogre::GpuProgram* create(Ogre::ResourceManager* creator, const Ogre::String& name,
                             Ogre::ResourceHandle handle, const Ogre::String& group, bool isManual,
                             Ogre::ManualResourceLoader* loader) override;
    void destroy(Ogre::GpuProgram* program) override;
};

}  // namespace velinor
