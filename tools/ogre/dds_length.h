// How long a DDS file has to be, after its header.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace velinor {

struct DdsLength {
    std::uint64_t bytes = 0;  // of the whole file, the header included
    unsigned faces = 1;       // 6 for a cube map, fewer where it lacks faces
    bool isCubeMap = false;
};

// What the header of a DDS file promises. `file` starts with the file's first bytes: 128, and 20 more where
// it has an extended header. Nothing for a format whose pixels have no size that is known here. Throws
// ByteFault where it is no DDS header, or one whose sizes contradict each other.
std::optional<DdsLength> ddsLength(std::string_view file);

}  // namespace velinor
