// Numbers as the text formats of a package write them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace velinor {

// Appends `value` as C's "%f" writes it under the "C" locale: six decimals, no exponent, exactly rounded.
// Not-a-number and the infinities come out as "nan", "-nan", "inf", "-inf".
void appendFixed6(std::string& text, double value);

// Room for any 32-bit float as writeFixed6 writes it: sign, 39 digits, point, six decimals.
inline constexpr std::size_t kFixed6FloatSize = 47;

// Writes `value` like appendFixed6 to `out`, which has room for kFixed6FloatSize bytes, and returns the end
// of what it wrote. For bulk data: some ten times as fast as printf.
char* writeFixed6(char* out, float value);

// Writes `value` in decimal to `out`, which has room for ten bytes, and returns the end of what it wrote.
char* writeDecimal(char* out, std::uint32_t value);

}  // namespace velinor
