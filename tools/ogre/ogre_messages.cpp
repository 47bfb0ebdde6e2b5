#include "tools/ogre/ogre_messages.h"

namespace velinor {

OgreLog::OgreLog(Take critical, Take warning) : critical_(std::move(critical)), warning_(std::move(warning)) {
    constexpr bool kIsDefault = true;
    constexpr bool kIsOnConsole = false;
    constexpr bool kIsInMemory = true;
    log_ = manager_.createLog("memory", kIsDefault, kIsOnConsole, kIsInMemory);
    log_->addListener(this);
}

OgreLog::~OgreLog() {
    log_->removeListener(this);
}

void OgreLog::messageLogged(const Ogre::String& message, Ogre::LogMessageLevel level, bool /*isDebug*/,
                            const Ogre::String& /*name*/, bool& skip) {
    // Drivers say this of a program whose samplers have no units yet; they get them a moment later.
    if (message.find("samplers with a different type") == Ogre::String::npos) {
        if (level == Ogre::LML_CRITICAL) critical_(message);
        if (level == Ogre::LML_WARNING) warning_(message);
    }
    skip = true;
}

ScriptFaults::ScriptFaults(Take take) : take_(std::move(take)) {
    Ogre::ScriptCompilerManager::getSingleton().setListener(this);
}

ScriptFaults::~ScriptFaults() {
    Ogre::ScriptCompilerManager::getSingleton().setListener(nullptr);
}

void ScriptFaults::handleError(Ogre::ScriptCompiler* /*compiler*/, Ogre::uint32 code,
                               const Ogre::String& file, int line, const Ogre::String& text) {
    if (code == Ogre::ScriptCompiler::CE_DEPRECATEDSYMBOL) return;
    const std::string kind = Ogre::ScriptCompiler::formatErrorCode(code);
    take_(file, line, text.empty() ? kind : kind + ": " + text);
}

}  // namespace velinor
