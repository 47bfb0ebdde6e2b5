// The compressed picture format DXT1: 4 x 4 texels in 8 bytes.
//
//   u16 colour0   red 5 bits, green 6, blue 5, red on top; little-endian
//   u16 colour1
//   u32 choices   2 bits a texel from the lowest, rows from the top:
//                 0 colour0   1 colour1   2 two thirds colour0   3 two thirds colour1
//
// So it is where colour0 > colour1, as here in every block. Otherwise choice 3 would be transparent black.
#pragma once

#include <array>
#include <cstdint>

#include "tools/sky/direction.h"

namespace velinor {

using Dxt1Block = std::array<std::uint8_t, 8>;
using TexelBlock = std::array<Rgb, 16>;  // rows from the top, parts 0 to 255

// The best block found for `texels`, which need not be whole numbers. The same bytes on every machine.
Dxt1Block encodeDxt1(const TexelBlock& texels);

// What a reader makes of `block`; for blocks with colour0 > colour1.
TexelBlock decodeDxt1(const Dxt1Block& block);

}  // namespace velinor
