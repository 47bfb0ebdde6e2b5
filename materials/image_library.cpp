#include "materials/image_library.h"

#include <vips/vips.h>

#include "platform/late_library.h"

namespace velinor {

std::optional<std::string> imageLibraryFault(const std::filesystem::path& folder) {
    return lateLibraryFault(folder / "libvips-42.dll");
}

int imageLibraryAbi() {
    return vips_version(3) - vips_version(5);
}

bool acceptImageLibraryAbi(int abi) {
    if (abi == kImageLibraryAbi) return true;
    g_log(nullptr, G_LOG_LEVEL_WARNING, "ABI mismatch");
    g_log(nullptr, G_LOG_LEVEL_WARNING, "library has ABI version %d", abi);
    g_log(nullptr, G_LOG_LEVEL_WARNING, "application needs ABI version %d", kImageLibraryAbi);
    // A library that was never started has no lock around its list of errors, and would crash.
    const bool isStarted = vips_get_argv0() != nullptr;
    if (isStarted) vips_error("vips_init", "ABI mismatch");
    return false;
}

void startImageLibrary(const std::string& hostFolder) {
    if (acceptImageLibraryAbi(imageLibraryAbi())) vips_init(hostFolder.c_str());
}

}  // namespace velinor
