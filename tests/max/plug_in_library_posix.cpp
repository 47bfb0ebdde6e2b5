#include "tests/max/plug_in_library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace velinor {

PlugInLibrary::PlugInLibrary(const std::filesystem::path& file)
    : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

PlugInLibrary::~PlugInLibrary() {
    dlclose(handle_);
}

void* PlugInLibrary::symbol(const char* name) const {
    return dlsym(handle_, name);
}

std::filesystem::path plugInFile() {
    return TOLVEX_PLUG_IN;
}

}  // namespace velinor
