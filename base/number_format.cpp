#include "base/number_format.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace velinor {
namespace {

constexpr double kMillion = 1e6;

// "00" to "99".
constexpr auto kDigitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Writes the pair of digits of `value`, below 100.
void writePair(char* out, std::uint32_t value) {
    std::memcpy(out, kDigitPairs.data() + std::size_t{2} * value, 2);
}

// Writes the six digits of `value`, below a million.
void writeSix(char* out, std::uint32_t value) {
    writePair(out, value / 10'000);
    writePair(out + 2, value / 100 % 100);
    writePair(out + 4, value % 100);
}

}  // namespace

void appendFixed6(std::string& text, double value) {
    // Sign, all digits before the point, the point, six decimals. std::to_chars is exact, like the C library,
    // and takes about a sixth of its time.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 10> buffer;  // filled below
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6);
    text.append(buffer.data(), result.ptr);
}

char* writeDecimal(char* out, std::uint32_t value) {
    return std::to_chars(out, out + std::numeric_limits<std::uint32_t>::digits10 + 1, value).ptr;
}

// A 32-bit float has 24 significant bits and 5^6 has 14, so value * 10^6 is exact in a double, and rounding
// that product to an integer is the one rounding that is left: to nearest, ties to even, as the C library
// rounds.
char* writeFixed6(char* out, float value) {
    constexpr double kLimit =
        4e15;  // of the product: integers and halves below it are exact, and fit 64 bits
    const double millionths = std::fabs(static_cast<double>(value)) * kMillion;
    if (!(millionths < kLimit)) {  // not-a-number too
        return std::to_chars(out, out + kFixed6FloatSize, static_cast<double>(value),
                             std::chars_format::fixed, 6)
            .ptr;
    }
    if (std::signbit(value)) *out++ = '-';
    // Adding 2^52 leaves no room for a fraction: the sum is the rounded product.
    constexpr double kRounder = 4503599627370496.0;
    const auto rounded =
        std::bit_cast<std::uint64_t>(millionths + kRounder) - std::bit_cast<std::uint64_t>(kRounder);
    const auto whole = static_cast<std::uint32_t>(rounded / 1'000'000);
    const auto decimals = static_cast<std::uint32_t>(rounded % 1'000'000);
    if (whole < 10) {
        *out++ = static_cast<char>('0' + whole);
    } else {
        out = writeDecimal(out, whole);
    }
    *out = '.';
    writeSix(out + 1, decimals);
    return out + 7;
}

}  // namespace velinor
