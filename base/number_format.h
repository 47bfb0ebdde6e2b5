// Numbers as the text formats of a package write them.
#pragma once

#include <string>

namespace velinor {

// Appends `value` as C's "%f" writes it under the "C" locale: six decimals, no exponent, exactly rounded.
// Not-a-number and the infinities come out as "nan", "-nan", "inf", "-inf".
void appendFixed6(std::string& text, double value);

}  // namespace velinor
