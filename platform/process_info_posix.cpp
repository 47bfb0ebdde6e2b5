#include "platform/process_info.h"

namespace velinor {

std::filesystem::path executablePath() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace velinor
