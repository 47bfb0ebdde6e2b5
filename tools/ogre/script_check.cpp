#include "tools/ogre/script_check.h"

#include <OgreMaterialManager.h>
#include <OgrePass.h>
#include <OgreScriptCompiler.h>
#include <OgreTechnique.h>
#include <OgreTextureUnitState.h>

#include <memory>

#include "tools/ogre/headless_ogre.h"
#include "tools/ogre/isolated_files.h"

namespace velinor {
namespace {

// Parses scripts with OGRE and says what is in them: "material", name; "texture", unit, file name, "cube" or
// "flat"; "fault", text.
class OgreScriptReader {
  public:
    OgreScriptReader(const PackageFiles& package, const std::filesystem::path& programs)
        : package_(package),
          ogre_([this](const std::string& text) {
              send({"fault", "OGRE logs " + text});
          }),
          faults_([this](const std::string& /*file*/, int line, const std::string& text) {
              send({"fault", "line " + std::to_string(line) + ": " + text});
          }) {
        ogre_.loadPrograms(programs);
    }

    void look(const std::string& name, const SendFileMessage& send) {
        send_ = &send;
        try {
            const std::string bytes = package_.readResource(name);
            Ogre::DataStreamPtr stream = streamOver(name, bytes);
            Ogre::ScriptCompilerManager::getSingleton().parseScript(stream, Ogre::RGN_DEFAULT);
        } catch (const std::exception& error) {
            send({"fault", std::string("OGRE says ") + error.what()});
        }
        const std::vector<Ogre::MaterialPtr> materials = materialsOf(name);
        if (materials.empty()) send({"fault", "the script has no material"});
        for (const Ogre::MaterialPtr& material : materials) {
            sendMaterial(*material);
            Ogre::MaterialManager::getSingleton().remove(material);  // the next script starts with none
        }
    }

  private:
    // Before the first file there is nobody to tell; the stand-in programs have their own test.
    void send(const FileMessage& message) const {
        if (send_ != nullptr) (*send_)(message);
    }

    static std::vector<Ogre::MaterialPtr> materialsOf(const std::string& script) {
        std::vector<Ogre::MaterialPtr> found;
        auto resources = Ogre::MaterialManager::getSingleton().getResourceIterator();
        while (resources.hasMoreElements()) {
            const Ogre::MaterialPtr material = Ogre::static_pointer_cast<Ogre::Material>(resources.getNext());
            if (material->getOrigin() == script) found.push_back(material);
        }
        return found;
    }

    void sendMaterial(const Ogre::Material& material) const {
        send({"material", material.getName()});
        for (const Ogre::Technique* technique : material.getTechniques()) {
            for (const Ogre::Pass* pass : technique->getPasses()) {
                for (const Ogre::TextureUnitState* unit : pass->getTextureUnitStates()) {
                    const bool isCube = unit->getTextureType() == Ogre::TEX_TYPE_CUBE_MAP;
                    send({"texture", unit->getName(), unit->getTextureName(), isCube ? "cube" : "flat"});
                }
            }
        }
    }

    const PackageFiles& package_;
    const SendFileMessage* send_ = nullptr;
    HeadlessOgre ogre_;
    ScriptFaults faults_;
};

void takeMaterial(const std::string& script, const std::string& material, ScriptContent& content,
                  CheckReport& report) {
    const auto [place, isNew] = content.materials.try_emplace(material, script);
    if (!isNew)
        report.fault(kResources + script,
                     "the material \"" + material + "\" stands in " + place->second + ", too");
}

}  // namespace

ScriptContent checkScripts(const PackageFiles& package, const std::filesystem::path& programs,
                           CheckReport& report) {
    ScriptContent content;
    IsolatedFiles work;
    work.prepare = [&]() -> LookAtFile {
        const auto reader = std::make_shared<OgreScriptReader>(package, programs);
        return [reader](const std::string& name, const SendFileMessage& send) { reader->look(name, send); };
    };
    work.receive = [&](const std::string& script, const FileMessage& message) {
        const std::string& kind = message.at(0);
        if (kind == "fault") report.fault(kResources + script, message.at(1));
        if (kind == "material") takeMaterial(script, message.at(1), content, report);
        if (kind == "texture")
            content.textures.push_back({script, message.at(1), message.at(2), message.at(3) == "cube"});
    };
    work.broken = [&](const std::string& script, const std::string& end) {
        report.fault(kResources + script, "parsing it with OGRE ends with " + end);
    };
    lookAtFiles(package.resources(".material"), work);
    return content;
}

}  // namespace velinor
