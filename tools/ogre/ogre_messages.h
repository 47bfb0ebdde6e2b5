// What OGRE says while it works: its log and the faults of scripts, as values.
#pragma once

#include <OgreLog.h>
#include <OgreLogManager.h>
#include <OgreScriptCompiler.h>

#include <functional>
#include <string>

namespace velinor {

// OGRE's log in memory: no file, nothing on the console. Has to exist before Ogre::Root does.
class OgreLog : private Ogre::LogListener {
  public:
    // `critical` gets each message of the highest level, `warning` those of the level below.
    using Take = std::function<void(const std::string&)>;
    OgreLog(Take critical, Take warning);
    ~OgreLog() override;
    OgreLog(const OgreLog&) = delete;
    OgreLog& operator=(const OgreLog&) = delete;

  private:
    void messageLogged(const Ogre::String& message, Ogre::LogMessageLevel level, bool isDebug,
                       const Ogre::String& name, bool& skip) override;

    Ogre::LogManager manager_;
    Ogre::Log* log_;
    Take critical_;
    Take warning_;
};

// Hears the faults of scripts. Notices of old words are none: the words do what they did.
class ScriptFaults : private Ogre::ScriptCompilerListener {
  public:
    using Take = std::function<void(const std::string& file, int line, const std::string& text)>;

    // `take` gets each fault. There can be one object of this class at a time, and it needs Ogre::Root.
    explicit ScriptFaults(Take take);
    ~ScriptFaults() override;
    ScriptFaults(const ScriptFaults&) = delete;
    ScriptFaults& operator=(const ScriptFaults&) = delete;

  private:
    void handleError(Ogre::ScriptCompiler* compiler, Ogre::uint32 code, const Ogre::String& file, int line,
                     const Ogre::String& text) override;

    Take take_;
};

}  // namespace velinor
