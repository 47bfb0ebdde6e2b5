// Single images out of packed ones, with libvips. Images are bytes of an image file (PNG, JPEG, WebP, ...),
// in and out, so nothing here touches a file.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace velinor {

enum class ImagePart {
    green,          // as one grey channel
    blue,           // as one grey channel
    invertedAlpha,  // as one grey channel: transparent becomes white
    inverted,       // every colour channel, without alpha
};

// The bytes of an image file; or nothing because the image lacks the part, without a fault; or nothing, and
// the fault.
struct ConvertedImage {
    std::optional<std::string> bytes;
    std::string fault;
};

// The part of an image, as PNG. Samples stay of 8 or 16 bits. Of a grey image every colour channel is the
// grey one. The first call starts the image library for this process, with one thread and without the loaders
// that its authors do not trust with foreign files. In a process forked from one that has used the library it
// may never return.
ConvertedImage imagePart(std::string_view image, ImagePart part);

// A PNG of pixels of four bytes, blue, green, red and alpha, rows from the top, `width` pixels a row; without
// an alpha channel where all is opaque.
ConvertedImage imageOfPixels(std::span<const std::uint8_t> bgra, std::uint32_t width);

}  // namespace velinor
