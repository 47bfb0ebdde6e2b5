// Small images of one colour, for channels without a bitmap.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "materials/channels.h"
#include "materials/material_writer_context.h"

namespace velinor {

// The components of a colour, red, green, blue, alpha, in steps of 1/255.
using QuantisedColor = std::array<std::int32_t, 4>;

// 255 times each component, in 32-bit floats, cut towards zero and not clamped: 1.5 becomes 382. Products
// that no 32-bit integer holds become the nearest one, NaN becomes 0.
QuantisedColor quantise(const Color& color);

// The file name of the image of that colour, three digits or more a component: "127127255255.png".
std::string solidColorFileName(const QuantisedColor& color);

// Makes sure that the resources folder holds the image of `color`, 10 by 10 pixels in RGBA; the pixels are
// the low bytes of the components. A file that bears its name already stays. The host pauses for 100 ms after
// each image that is written. Returns the file's name. Throws std::filesystem::filesystem_error with the
// operation word "exists" where the file cannot be looked for.
std::string placeSolidColor(const MaterialWriterContext& context, const Color& color);

}  // namespace velinor
