#include "tools/ogre/headless_ogre.h"

#include <OgreDataStream.h>
#include <OgreMaterialManager.h>
#include <OgreResourceGroupManager.h>

namespace velinor {

HeadlessOgre::HeadlessOgre(OgreLog::Take critical)
    : log_(std::move(critical), [](const std::string&) {}), root_("", "", "") {
    Ogre::HighLevelGpuProgramManager::getSingleton().addFactory(&factory_);
    Ogre::MaterialManager::getSingleton().initialise();
}

// Materials refer to programs, and programs to the factory that made them: both go before the factory does.
HeadlessOgre::~HeadlessOgre() {
    Ogre::MaterialManager::getSingleton().removeAll();
    Ogre::HighLevelGpuProgramManager::getSingleton().removeAll();
    Ogre::HighLevelGpuProgramManager::getSingleton().removeFactory(&factory_);
}

void HeadlessOgre::loadPrograms(const std::filesystem::path& folder) {
    auto& groups = Ogre::ResourceGroupManager::getSingleton();
    groups.addResourceLocation(folder.string(), "FileSystem", Ogre::RGN_DEFAULT);
    groups.initialiseAllResourceGroups();
}

void HeadlessOgre::loadImageCodecs() {
    loadOgrePlugin(root_, "Codec_FreeImage");
}

Ogre::DataStreamPtr streamOver(const std::string& name, std::string_view bytes) {
    // The stream only reads: it is opened as read-only and does not own the memory.
    constexpr bool kFreeOnClose = false;
    constexpr bool kReadOnly = true;
    return std::make_shared<Ogre::MemoryDataStream>(name, const_cast<char*>(bytes.data()), bytes.size(),
                                                    kFreeOnClose, kReadOnly);
}

void loadOgrePlugin(Ogre::Root& root, const std::string& name) {
    root.loadPlugin(std::string(TOLVEX_OGRE_PLUGINS) + "/" + name);
}

}  // namespace velinor
