#include "materials/alpha_test.h"

#include "base/text.h"
#include "materials/materials_test_support.h"

namespace velinor {
namespace {

class AlphaTest : public MaterialsTest {
  protected:
    template <class Sample>
    bool hasLow(const TestImage<Sample>& image, const char* name = "a.png", const char* option = nullptr) {
        const std::filesystem::path path = sources_ / name;
        saveImage(image, path, option);
        const AlphaAnswer answer = testAlpha(path);
        EXPECT_EQ(answer.fault, "");
        return answer.isLow;
    }

    // An image of RGBA pixels that are white but for their alpha.
    template <class Sample>
    static TestImage<Sample> withAlphas(const std::vector<Sample>& alphas) {
        TestImage<Sample> image{static_cast<int>(alphas.size()), 1, 4, {}};
        for (const Sample alpha : alphas) {
            for (int i = 0; i < 3; ++i)
                image.samples.push_back(static_cast<Sample>(-1));
            image.samples.push_back(alpha);
        }
        return image;
    }
};

TEST_F(AlphaTest, FindsEightBitValuesBelow64) {
    struct Case {
        std::vector<std::uint8_t> alphas;
        bool isLow;
    };
    for (const auto& [alphas, isLow] :
         {Case{{64, 64, 64}, false}, Case{{64, 63, 64}, true}, Case{{255, 255, 63}, true}, Case{{0, 0}, true},
          Case{{63}, true}, Case{{64}, false}, Case{{1}, true}, Case{{255}, false},
          Case{{64, 254, 65}, false}}) {
        EXPECT_EQ(hasLow(withAlphas(alphas)), isLow) << testing::PrintToString(alphas);
    }
}

TEST_F(AlphaTest, FindsSixteenBitValuesBelow16384) {
    struct Case {
        std::vector<std::uint16_t> alphas;
        bool isLow;
    };
    for (const auto& [alphas, isLow] :
         {Case{{16384}, false}, Case{{16383}, true}, Case{{16384, 16384, 16383}, true}, Case{{0}, true},
          Case{{65535, 20000}, false}, Case{{65535, 1}, true}, Case{{17000}, false}}) {
        EXPECT_EQ(hasLow(withAlphas(alphas)), isLow) << testing::PrintToString(alphas);
    }
}

TEST_F(AlphaTest, LooksAtAlphaOnly) {
    EXPECT_FALSE(hasLow(pixel({0, 0, 0, 255})));
    EXPECT_FALSE(hasLow(pixel({0, 0, 0})));
    EXPECT_FALSE(hasLow(pixel({0})));
}

TEST_F(AlphaTest, AnswersNoForGreyWithAlphaAndSaysWhy) {
    saveImage(pixel({128, 0}), sources_ / "a.png");
    saveImage(TestImage<std::uint16_t>{1, 1, 2, {128, 0}}, sources_ / "b.png");
    for (const char* name : {"a.png", "b.png"}) {
        const AlphaAnswer answer = testAlpha(sources_ / name);
        EXPECT_FALSE(answer.isLow);
        EXPECT_NE(answer.fault, "");
    }
}

TEST_F(AlphaTest, FindsTransparentEntriesOfPalettes) {
    TestImage<std::uint8_t> image = withAlphas<std::uint8_t>({255, 0, 255, 0});
    EXPECT_TRUE(hasLow(image, "palette.png", "palette"));
    EXPECT_EQ(readFile(sources_ / "palette.png")[25], '\3') << "the colour type: indexed";
    image = withAlphas<std::uint8_t>({255, 255});
    EXPECT_FALSE(hasLow(image, "palette.png", "palette"));
}

TEST_F(AlphaTest, FindsInterlacedValues) {
    EXPECT_TRUE(hasLow(withAlphas<std::uint8_t>({255, 255, 10}), "a.png", "interlace"));
}

TEST_F(AlphaTest, KnowsPngByItsContent) {
    EXPECT_TRUE(hasLow(pixel({1, 2, 3, 0})));
    std::filesystem::rename(sources_ / "a.png", sources_ / "a.jpg");
    EXPECT_TRUE(testAlpha(sources_ / "a.jpg").isLow);
    EXPECT_FALSE(hasLow(pixel({1, 2, 3}), "b.jpg"));
    EXPECT_FALSE(hasLow(pixel({1, 2, 3, 0}), "b.tif")) << "transparent, and no PNG";
    std::filesystem::rename(sources_ / "b.tif", sources_ / "b.png");
    EXPECT_EQ(testAlpha(sources_ / "b.png"), AlphaAnswer());
}

TEST_F(AlphaTest, AnswersNoForWhatIsNoImage) {
    writeFile(sources_ / "empty.png", "");
    writeFile(sources_ / "text.png", "no image");
    std::filesystem::create_directory(sources_ / "folder.png");
    for (const char* name : {"empty.png", "text.png", "folder.png", "nowhere.png"})
        EXPECT_EQ(testAlpha(sources_ / name), AlphaAnswer()) << name;
    EXPECT_EQ(testAlpha(""), AlphaAnswer());
    EXPECT_EQ(testAlpha(std::string("a\0b", 3)), AlphaAnswer());
    EXPECT_EQ(testAlpha(std::string(1 << 20, 'x')), AlphaAnswer());
    EXPECT_STREQ(vips_error_buffer(), "") << "nothing is left behind";
}

TEST_F(AlphaTest, SaysOfADamagedPngThatItIs) {
    TestImage<std::uint8_t> image{64, 64, 4, {}};
    for (int i = 0; i < 64 * 64 * 4; ++i)
        image.samples.push_back(static_cast<std::uint8_t>((i * 7919) >> 3 | 64));
    EXPECT_FALSE(hasLow(image));
    const std::string whole = readFile(sources_ / "a.png");
    const std::filesystem::path cut = sources_ / "cut.png";
    for (std::size_t length = 8; length + 12 < whole.size(); length += 97) {
        writeFile(cut, whole.substr(0, length));
        EXPECT_NE(testAlpha(cut).fault, "") << length << " of " << whole.size() << " bytes";
    }
    std::string damaged = whole;
    damaged[16] = '\x7F';  // a width of 2 billion pixels, with a checksum that does not fit
    writeFile(cut, damaged);
    EXPECT_FALSE(testAlpha(cut).isLow);
    EXPECT_NE(testAlpha(cut).fault, "");
}

TEST_F(AlphaTest, LooksAgainAtAFileThatWasReplaced) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(hasLow(pixel({1, 2, 3, 0})));
        EXPECT_FALSE(hasLow(pixel({1, 2, 3, 255})));
    }
}

TEST_F(AlphaTest, TakesBracketsInFoldersForWhatTheyAre) {
    std::vector<const char*> folders{"a[1]", "[b", "c]", "d,e"};
    if (!kIsWindows) folders.push_back("f:g");  // no name there
    for (const char* folder : folders) {
        std::filesystem::create_directory(sources_ / folder);
        EXPECT_TRUE(hasLow(pixel({1, 2, 3, 0}), (std::string(folder) + "/a.png").c_str())) << folder;
    }
}

}  // namespace
}  // namespace velinor
