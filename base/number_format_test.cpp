#include "base/number_format.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace velinor {
namespace {

std::string fixed6(double value) {
    std::string text;
    appendFixed6(text, value);
    return text;
}

std::string byTheCLibrary(double value) {
    // The C library of Windows does not print the sign of NaN, and newer ones print more than that.
    if (std::isnan(value)) return std::signbit(value) ? "-nan" : "nan";
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%f", value);
    return buffer;
}

TEST(AppendFixed6, WritesSixDecimals) {
    EXPECT_EQ(fixed6(0.0), "0.000000");
    EXPECT_EQ(fixed6(-0.0), "-0.000000");
    EXPECT_EQ(fixed6(1.5), "1.500000");
    EXPECT_EQ(fixed6(0.1F), "0.100000");
    EXPECT_EQ(fixed6(-4e-7), "-0.000000");
    EXPECT_EQ(fixed6(16777216.0), "16777216.000000");
    EXPECT_EQ(fixed6(0.0000005), "0.000000");
    EXPECT_EQ(fixed6(0.5 / 1048576), "0.000000");
    EXPECT_EQ(fixed6(std::numeric_limits<float>::max()), "340282346638528859811704183484516925440.000000");
}

TEST(AppendFixed6, AppendsToWhatIsThere) {
    std::string text = "x: ";
    appendFixed6(text, 2);
    EXPECT_EQ(text, "x: 2.000000");
}

TEST(AppendFixed6, AgreesWithTheCLibraryOnSpecialValues) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double value :
         {infinity, -infinity, nan, std::copysign(nan, -1.0), std::numeric_limits<double>::max(),
          std::numeric_limits<double>::denorm_min()}) {
        EXPECT_EQ(fixed6(value), byTheCLibrary(value));
    }
}

TEST(AppendFixed6, AgreesWithTheCLibraryOnRandomFloats) {
    std::mt19937 random(1);
    for (int i = 0; i < 100000; ++i) {
        const auto value = static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
        ASSERT_EQ(fixed6(value), byTheCLibrary(value));
    }
}

TEST(AppendFixed6, RoundsTiesAsTheCLibraryDoes) {
    for (int i = -4096; i <= 4096; ++i) {
        const double tie = i / 128.0 / 1000000.0 * 64.0;
        ASSERT_EQ(fixed6(tie), byTheCLibrary(tie)) << i;
        const double exact = (2.0 * i + 1.0) / 128.0;  // at most seven decimals: a tie in the seventh
        ASSERT_EQ(fixed6(exact), byTheCLibrary(exact)) << i;
    }
}

std::string fast(float value) {
    std::array<char, kFixed6FloatSize> buffer{};
    return {buffer.data(), writeFixed6(buffer.data(), value)};
}

TEST(WriteFixed6, AgreesWithTheCLibraryOnSpecialValues) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float most = std::numeric_limits<float>::max();
    const float least = std::numeric_limits<float>::denorm_min();
    for (const float value :
         {0.0F, -0.0F, infinity, -infinity, nan, std::copysign(nan, -1.0F), most, -most, least, -least, 9.5F,
          9.9999995F, 99.0F, 4e9F, 3999999744.0F, 4294967040.0F, 4.3e9F}) {
        EXPECT_EQ(fast(value), byTheCLibrary(value));
    }
}

TEST(WriteFixed6, AgreesWithTheCLibraryOnRandomFloats) {
    std::mt19937 random(2);
    std::uniform_real_distribution<float> ordinary(-2000, 2000);
    for (int i = 0; i < 200000; ++i) {
        const float any = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        ASSERT_EQ(fast(any), byTheCLibrary(any));
        const float value = ordinary(random);
        ASSERT_EQ(fast(value), byTheCLibrary(value));
        ASSERT_EQ(fast(value / 1024), byTheCLibrary(value / 1024));
    }
}

TEST(WriteFixed6, RoundsTiesAsTheCLibraryDoes) {
    for (int i = -20000; i <= 20000; ++i) {
        const float tie = (2.0F * static_cast<float>(i) + 1) / 128;  // seven decimals, the last of them a 5
        ASSERT_EQ(fast(tie), byTheCLibrary(tie));
    }
}

TEST(WriteDecimal, WritesEveryNumber) {
    for (const std::uint32_t value : {0U, 9U, 10U, 65535U, 1000000U, 4294967295U}) {
        std::array<char, 10> buffer{};
        EXPECT_EQ(std::string(buffer.data(), writeDecimal(buffer.data(), value)), std::to_string(value));
    }
}

}  // namespace
}  // namespace velinor
