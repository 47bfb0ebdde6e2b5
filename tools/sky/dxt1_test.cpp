#include "tools/sky/dxt1.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace velinor {
namespace {

TexelBlock flat(const Rgb& colour) {
    TexelBlock block;
    block.fill(colour);
    return block;
}

// From `from` at the top left to `to` at the bottom right.
TexelBlock gradient(const Rgb& from, const Rgb& to) {
    TexelBlock block;
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = mix(from, to, static_cast<double>(i % 4 + i / 4) / 6);
    return block;
}

// The largest difference of a part between two blocks.
double largestError(const TexelBlock& a, const TexelBlock& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel)
            largest = std::max(largest, std::abs(a[i][channel] - b[i][channel]));
    }
    return largest;
}

bool hasFourColours(const Dxt1Block& block) {
    return (block[0] | block[1] << 8) > (block[2] | block[3] << 8);
}

TEST(Dxt1, ReadsEndColoursAndChoicesWhereTheFormatHasThem) {
    // Pure red and pure blue; the first row has the choices 0, 1, 2, 3, all others 0.
    const TexelBlock texels = decodeDxt1({0x00, 0xF8, 0x1F, 0x00, 0xE4, 0, 0, 0});
    EXPECT_EQ(texels[0], (Rgb{255, 0, 0}));
    EXPECT_EQ(texels[1], (Rgb{0, 0, 255}));
    EXPECT_NEAR(texels[2][0], 170, 1e-9);
    EXPECT_NEAR(texels[3][0], 85, 1e-9);
    EXPECT_EQ(texels[4], (Rgb{255, 0, 0}));
}

TEST(Dxt1, KeepsColoursThatItCanHold) {
    for (const Rgb& colour : {Rgb{0, 0, 0}, Rgb{255, 255, 255}, Rgb{255, 0, 0}, Rgb{0, 255, 0},
                              Rgb{0, 0, 255}, Rgb{132, 130, 132}, Rgb{8, 4, 0}}) {
        const Dxt1Block block = encodeDxt1(flat(colour));
        EXPECT_TRUE(hasFourColours(block));
        EXPECT_NEAR(largestError(decodeDxt1(block), flat(colour)), 0, 1e-9)
            << colour[0] << " " << colour[1] << " " << colour[2];
    }
}

TEST(Dxt1, KeepsGreysWithinTwoSteps) {
    for (int grey = 0; grey < 256; ++grey) {
        const TexelBlock texels = flat({grey + 0.0, grey + 0.0, grey + 0.0});
        const Dxt1Block block = encodeDxt1(texels);
        EXPECT_TRUE(hasFourColours(block)) << grey;
        EXPECT_LE(largestError(decodeDxt1(block), texels), 2) << grey;
    }
}

TEST(Dxt1, KeepsGradientsWithinAFewSteps) {
    struct Case {
        const char* name;
        Rgb from, to;
    };
    const Case cases[] = {
        {"all channels together", {100, 120, 140}, {130, 150, 170}},
        {"red against blue", {100, 120, 170}, {130, 120, 140}},
        {"one channel", {100, 120, 140}, {100, 120, 170}},
        {"barely any", {100, 120, 140}, {101, 122, 142}},
    };
    for (const auto& [name, from, to] : cases) {
        const Dxt1Block block = encodeDxt1(gradient(from, to));
        EXPECT_TRUE(hasFourColours(block)) << name;
        EXPECT_LE(largestError(decodeDxt1(block), gradient(from, to)), 9) << name;
    }
}

}  // namespace
}  // namespace velinor
