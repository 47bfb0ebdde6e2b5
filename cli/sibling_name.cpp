#include "cli/sibling_name.h"

#include <algorithm>
#include <random>
#include <string>

#include "base/text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The start of `name`, no character cut in two, to which `addition` bytes are added: the result is no longer
// than a long name was, since file names have a greatest length, and paths on Windows have one, too.
std::string shortened(std::string name, std::size_t addition) {
    constexpr std::size_t kKept = 20;
    const std::size_t longest = std::max(kKept, name.size() - std::min(name.size(), addition));
    if (name.size() <= longest) return name;
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
        --end;
    name.resize(end);
    return name;
}

}  // namespace

fs::path unusedSibling(const fs::path& path, std::string_view purpose) {
    std::random_device random;
    const std::string end = ".tolvex-" + std::string(purpose) + "-";
    constexpr std::size_t kDotAndDigits = 11;
    const std::string start = "." + shortened(utf8Path(path.filename()), end.size() + kDotAndDigits) + end;
    for (;;) {
        fs::path candidate = path.parent_path() / toPath(toUtf16Lossy(start + std::to_string(random())));
        std::error_code error;
        if (!fs::exists(fs::symlink_status(candidate, error))) return candidate;
    }
}

}  // namespace velinor
