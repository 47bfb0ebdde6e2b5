#include "tests/max/plug_in_library.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace velinor {

PlugInLibrary::PlugInLibrary(const std::filesystem::path& file) : handle_(LoadLibraryW(file.c_str())) {
    if (handle_ == nullptr) throw std::runtime_error("LoadLibraryW: error " + std::to_string(GetLastError()));
}

PlugInLibrary::~PlugInLibrary() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* PlugInLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::filesystem::path plugInFile() {
    return TOLVEX_PLUG_IN;
}

}  // namespace velinor
