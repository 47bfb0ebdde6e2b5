// Whether an image is see-through somewhere.
#pragma once

#include <string>

namespace velinor {

// Whether the file at `path` is a PNG whose fourth band, alpha, has a value in the lowest quarter of its
// range: below 64 of 8 bits, below 16384 of 16 bits. False for everything else: other files, images without a
// fourth band, files that cannot be read.
bool hasLowAlpha(const std::string& path);

}  // namespace velinor
