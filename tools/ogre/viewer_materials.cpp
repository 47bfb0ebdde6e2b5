#include "tools/ogre/viewer_materials.h"

#include <OgreMaterialManager.h>
#include <OgrePass.h>
#include <OgreResourceGroupManager.h>
#include <OgreScriptCompiler.h>
#include <OgreTechnique.h>
#include <OgreTextureManager.h>
#include <OgreTextureUnitState.h>

#include <map>

#include "tools/ogre/headless_ogre.h"
#include "tools/ogre/viewer_textures.h"

namespace velinor {
namespace {

void parseScripts(const PackageFiles& package, const Tell& tell) {
    const ScriptFaults faults([&](const std::string& file, int line, const std::string& text) {
        tell("resources/" + file + ": line " + std::to_string(line) + ": " + text);
    });
    for (const std::string& name : package.resources(".material")) {
        try {
            const std::string bytes = package.readResource(name);
            Ogre::DataStreamPtr stream = streamOver(name, bytes);
            Ogre::ScriptCompilerManager::getSingleton().parseScript(stream, Ogre::RGN_DEFAULT);
        } catch (const std::exception& error) {
            tell("resources/" + name + ": " + error.what());
        }
    }
}

// Replaces what cannot be loaded; asks once for each texture.
class TextureReplacement {
  public:
    TextureReplacement(const PackageFiles& package, const Tell& tell) : package_(package), tell_(tell) {}

    void apply(Ogre::TextureUnitState& unit) {
        const bool isCube = unit.getTextureType() == Ogre::TEX_TYPE_CUBE_MAP;
        if (!canLoad(unit.getTextureName(), unit.getTextureType()))
            unit.setTextureName(standInTexture(unit.getName(), isCube), unit.getTextureType());
    }

  private:
    bool canLoad(const std::string& name, Ogre::TextureType type) {
        const auto [known, isNew] = loads_.try_emplace(name, false);
        if (isNew) known->second = load(name, type);
        return known->second;
    }

    bool load(const std::string& name, Ogre::TextureType type) const {
        if (!package_.hasResource(name)) {
            tell_("resources/" + name + ": the texture is not in the package; a plain one stands in");
            return false;
        }
        try {
            Ogre::TextureManager::getSingleton().load(name, Ogre::RGN_DEFAULT, type);
            return true;
        } catch (const Ogre::Exception& error) {
            tell_("resources/" + name + ": " + error.getDescription() + " A plain texture stands in");
            return false;
        }
    }

    const PackageFiles& package_;
    const Tell& tell_;
    std::map<std::string, bool> loads_;  // by texture name
};

void prepare(Ogre::Pass& pass, TextureReplacement& textures) {
    // The sky's pass names no programs, and says nothing of light: it would be lit by whatever lights there
    // are.
    if (!pass.hasVertexProgram() && pass.getNumTextureUnitStates() > 0) {
        pass.setLightingEnabled(false);
        pass.setVertexProgram("viewer_sky_vp");
        pass.setFragmentProgram("viewer_sky_fp");
    }
    // A blended pass that writes depth counts as a solid one, and solid ones are drawn in no particular
    // order.
    if (pass.isTransparent() && pass.getDepthWriteEnabled()) pass.setTransparentSortingForced(true);
    for (Ogre::TextureUnitState* unit : pass.getTextureUnitStates())
        textures.apply(*unit);
}

void prepareMaterials(const PackageFiles& package, const Tell& tell) {
    TextureReplacement textures(package, tell);
    auto resources = Ogre::MaterialManager::getSingleton().getResourceIterator();
    while (resources.hasMoreElements()) {
        const auto material = Ogre::static_pointer_cast<Ogre::Material>(resources.getNext());
        for (Ogre::Technique* technique : material->getTechniques()) {
            for (Ogre::Pass* pass : technique->getPasses())
                prepare(*pass, textures);
        }
    }
}

}  // namespace

void loadMaterials(const PackageFiles& package, const std::filesystem::path& programs, const Tell& tell) {
    Ogre::MaterialManager::getSingleton().setDefaultTextureFiltering(Ogre::TFO_ANISOTROPIC);
    auto& groups = Ogre::ResourceGroupManager::getSingleton();
    groups.addResourceLocation(programs.string(), "FileSystem", Ogre::RGN_DEFAULT);
    groups.initialiseAllResourceGroups();
    // Only now, so that the scripts are left to us: of scripts that OGRE looks for, one bad one ends them
    // all.
    groups.addResourceLocation(package.resourcesFolder().string(), "FileSystem", Ogre::RGN_DEFAULT);
    parseScripts(package, tell);
    makeStandInTextures();
    prepareMaterials(package, tell);
}

}  // namespace velinor
