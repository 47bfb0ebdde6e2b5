#include "hosts/assimp/image_conversion.h"

#include <gtest/gtest.h>

#include "hosts/assimp/image_test_support.h"

namespace velinor {
namespace {

// Two pixels.
const Samples kColours{2, 3, {10, 20, 30, 40, 50, 60}};
const Samples kWithAlpha{2, 4, {10, 20, 30, 0, 40, 50, 60, 200}};
const Samples kGrey{2, 1, {10, 40}};
const Samples kGreyWithAlpha{2, 2, {10, 0, 40, 200}};

TEST(ImageConversion, TakesTheAskedPartOfEveryKindOfImage) {
    struct Case {
        const char* name;
        Samples image;
        ImagePart part;
        Samples expected;
    };
    const Case cases[] = {
        {"green of colours", kColours, ImagePart::green, {2, 1, {20, 50}}},
        {"blue of colours", kColours, ImagePart::blue, {2, 1, {30, 60}}},
        {"green with alpha", kWithAlpha, ImagePart::green, {2, 1, {20, 50}}},
        {"blue with alpha", kWithAlpha, ImagePart::blue, {2, 1, {30, 60}}},
        {"green of grey", kGrey, ImagePart::green, {2, 1, {10, 40}}},
        {"blue of grey with alpha", kGreyWithAlpha, ImagePart::blue, {2, 1, {10, 40}}},
        {"alpha", kWithAlpha, ImagePart::invertedAlpha, {2, 1, {255, 55}}},
        {"alpha of grey", kGreyWithAlpha, ImagePart::invertedAlpha, {2, 1, {255, 55}}},
        {"inverted colours", kColours, ImagePart::inverted, {2, 3, {245, 235, 225, 215, 205, 195}}},
        {"inverted, alpha dropped", kWithAlpha, ImagePart::inverted, {2, 3, {245, 235, 225, 215, 205, 195}}},
        {"inverted grey", kGrey, ImagePart::inverted, {2, 1, {245, 215}}},
    };
    for (const auto& [name, image, part, expected] : cases) {
        SCOPED_TRACE(name);
        const ConvertedImage converted = imagePart(imageFile(image), part);
        EXPECT_EQ(converted.fault, "");
        ASSERT_TRUE(converted.bytes);
        EXPECT_TRUE(converted.bytes->starts_with("\x89PNG"));
        EXPECT_EQ(samplesOf(*converted.bytes), expected);
    }
}

TEST(ImageConversion, SixteenBitsStay) {
    const Samples wide{2, 3, {1000, 2000, 3000, 4000, 50000, 60000}};
    const ConvertedImage green = imagePart(imageFile(wide, ".png", true), ImagePart::green);
    ASSERT_TRUE(green.bytes) << green.fault;
    EXPECT_EQ(samplesOf(*green.bytes), (Samples{2, 1, {2000, 50000}}));
    const ConvertedImage inverted = imagePart(imageFile(wide, ".png", true), ImagePart::inverted);
    ASSERT_TRUE(inverted.bytes) << inverted.fault;
    EXPECT_EQ(samplesOf(*inverted.bytes).values.front(), 64535);
}

TEST(ImageConversion, ReadsJpegToo) {
    const ConvertedImage green =
        imagePart(imageFile({2, 3, {90, 90, 90, 90, 90, 90}}, ".jpg"), ImagePart::green);
    ASSERT_TRUE(green.bytes) << green.fault;
    EXPECT_EQ(samplesOf(*green.bytes), (Samples{2, 1, {90, 90}}));
}

TEST(ImageConversion, AnImageWithoutAlphaHasNoSuchPartAndNoFault) {
    const ConvertedImage converted = imagePart(imageFile(kColours), ImagePart::invertedAlpha);
    EXPECT_FALSE(converted.bytes);
    EXPECT_EQ(converted.fault, "");
}

TEST(ImageConversion, WhatIsNoWholeImageHasAFaultInOneLine) {
    const std::string image = imageFile(Samples{64, 3, std::vector<int>(64 * 64 * 3, 7)});
    const std::string cases[] = {"", "no image", image.substr(0, 20), image.substr(0, image.size() / 2)};
    for (const std::string& bytes : cases) {
        const ConvertedImage converted = imagePart(bytes, ImagePart::green);
        EXPECT_FALSE(converted.bytes) << bytes.size();
        EXPECT_NE(converted.fault, "") << bytes.size();
        EXPECT_EQ(converted.fault.find('\n'), std::string::npos) << converted.fault;
    }
}

TEST(ImageConversion, AnImageOfGiantSizeIsRefusedBeforeItIsRead) {
    std::string image = imageFile(kColours);
    const std::string giant("\x00\x00\xFF\xFF\x00\x00\xFF\xFF", 8);  // width and height 65535
    image.replace(16, giant.size(), giant);
    EXPECT_FALSE(imagePart(image, ImagePart::green).bytes);
}

TEST(ImageConversion, PixelsBecomeAnImageWithAlphaWhereOneIsNotOpaque) {
    const std::vector<std::uint8_t> opaque{3, 2, 1, 255, 6, 5, 4, 255};
    ASSERT_TRUE(imageOfPixels(opaque, 1).bytes);
    EXPECT_EQ(samplesOf(*imageOfPixels(opaque, 1).bytes), (Samples{1, 3, {1, 2, 3, 4, 5, 6}}));
    const std::vector<std::uint8_t> open{3, 2, 1, 255, 6, 5, 4, 9};
    EXPECT_EQ(samplesOf(*imageOfPixels(open, 2).bytes), (Samples{2, 4, {1, 2, 3, 255, 4, 5, 6, 9}}));
}

TEST(ImageConversion, PixelsThatFillNoRectangleAreRefused) {
    const std::vector<std::uint8_t> three(12, 255);
    EXPECT_FALSE(imageOfPixels(three, 2).bytes);
    EXPECT_FALSE(imageOfPixels(three, 0).bytes);
    EXPECT_FALSE(imageOfPixels({}, 1).bytes);
}

}  // namespace
}  // namespace velinor
