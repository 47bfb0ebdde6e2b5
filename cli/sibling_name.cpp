#include "cli/sibling_name.h"

#include <random>
#include <string>

#include "base/text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The start of `name` that leaves room for an addition within the 255 bytes of a file name, no character cut
// in two.
std::string shortened(std::string name) {
    constexpr std::size_t kLongest = 200;
    if (name.size() <= kLongest) return name;
    std::size_t end = kLongest;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
        --end;
    name.resize(end);
    return name;
}

}  // namespace

fs::path unusedSibling(const fs::path& path, std::string_view purpose) {
    std::random_device random;
    const std::string start =
        "." + shortened(utf8Path(path.filename())) + ".tolvex-" + std::string(purpose) + "-";
    for (;;) {
        fs::path candidate = path.parent_path() / toPath(toUtf16Lossy(start + std::to_string(random())));
        std::error_code error;
        if (!fs::exists(fs::symlink_status(candidate, error))) return candidate;
    }
}

}  // namespace velinor
