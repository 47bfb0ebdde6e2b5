// The plug-in, loaded as 3ds Max loads it.
#pragma once

#include "hosts/max/max_sdk.h"

#include <filesystem>
#include <memory>

namespace velinor {

// The file that the build has made.
std::filesystem::path plugInFile();

// A library of the system, loaded for as long as this lives.
class PlugInLibrary {
  public:
    // Throws std::runtime_error where the system does not load it.
    explicit PlugInLibrary(const std::filesystem::path& file = plugInFile());
    PlugInLibrary(const PlugInLibrary&) = delete;
    PlugInLibrary& operator=(const PlugInLibrary&) = delete;
    ~PlugInLibrary();

    const MCHAR* description() const { return function<const MCHAR*()>("LibDescription")(); }
    int numberOfClasses() const { return function<int()>("LibNumberClasses")(); }
    ::ClassDesc* classDesc(int index) const { return function<::ClassDesc*(int)>("LibClassDesc")(index); }
    ULONG version() const { return function<ULONG()>("LibVersion")(); }
    int initialize() const { return function<int()>("LibInitialize")(); }
    int shutdown() const { return function<int()>("LibShutdown")(); }

    // A new exporter; null where the plug-in makes none.
    std::unique_ptr<::SceneExport> exporter() const {
        return std::unique_ptr<::SceneExport>(static_cast<::SceneExport*>(classDesc(0)->Create(0)));
    }

    bool exports(const char* name) const { return symbol(name) != nullptr; }

  private:
    template <class Signature>
    Signature* function(const char* name) const {
        return reinterpret_cast<Signature*>(symbol(name));
    }

    void* symbol(const char* name) const;

    void* handle_;
};

}  // namespace velinor
