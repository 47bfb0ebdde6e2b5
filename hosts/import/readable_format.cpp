#include "hosts/import/readable_format.h"

namespace velinor {

std::span<const std::string_view> neverExported() {
    static constexpr std::string_view kThings[] = {
        "animations",       "bones, skins and morph targets",
        "vertex colours",   "offset, tiling and rotation of textures",
        "lines and points",
    };
    return kThings;
}

}  // namespace velinor
