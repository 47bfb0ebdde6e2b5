// Between linear light and the numbers of a picture.
#pragma once

namespace velinor {

// The sRGB value, 0 to 255 and not rounded, of the linear light `light`, which is clamped to 0 .. 1, and the
// way back. Unlike std::pow they give the same bits on every machine.
double toSrgb(double light);
double fromSrgb(double value);

}  // namespace velinor
