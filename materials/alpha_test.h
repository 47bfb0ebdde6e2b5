// Whether an image is see-through somewhere.
#pragma once

#include <filesystem>
#include <string>

namespace velinor {

// What the pixels of an image say.
struct AlphaAnswer {
    bool isLow = false;  // some alpha lies in the lowest quarter of its range
    std::string fault;   // why the answer may be wrong, for people; empty where it is sure

    bool operator==(const AlphaAnswer&) const = default;
};

// Whether the file at `path` is a PNG whose fourth band, alpha, has a value in the lowest quarter of its
// range: below 64 of 8 bits, below 16384 of 16 bits. No for everything else: other files, images without a
// fourth band, files that cannot be read. A PNG that is damaged, or whose alpha is not the fourth band, is a
// fault, too.
AlphaAnswer testAlpha(const std::filesystem::path& path);

}  // namespace velinor
