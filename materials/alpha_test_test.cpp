#include "materials/alpha_test.h"

#include "materials/materials_test_support.h"

namespace velinor {
namespace {

class AlphaTest : public MaterialsTest {
  protected:
    template <class Sample>
    bool hasLow(const TestImage<Sample>& image, const char* name = "a.png", const char* option = nullptr) {
        const std::filesystem::path path = sources_ / name;
        saveImage(image, path, option);
        return hasLowAlpha(path.string());
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

TEST_F(AlphaTest, AnswersNoForGreyWithAlpha) {
    EXPECT_FALSE(hasLow(pixel({128, 0})));
    EXPECT_FALSE(hasLow(TestImage<std::uint16_t>{1, 1, 2, {128, 0}}));
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
    EXPECT_TRUE(hasLowAlpha((sources_ / "a.jpg").string()));
    EXPECT_FALSE(hasLow(pixel({1, 2, 3}), "b.jpg"));
    EXPECT_FALSE(hasLow(pixel({1, 2, 3, 0}), "b.tif")) << "transparent, and no PNG";
    std::filesystem::rename(sources_ / "b.tif", sources_ / "b.png");
    EXPECT_FALSE(hasLowAlpha((sources_ / "b.png").string()));
}

TEST_F(AlphaTest, AnswersNoForWhatIsNoImage) {
    writeFile(sources_ / "empty.png", "");
    writeFile(sources_ / "text.png", "no image");
    writeFile(sources_ / "magic.png", "\x89PNG\r\n\x1A\n");
    std::filesystem::create_directory(sources_ / "folder.png");
    for (const char* name : {"empty.png", "text.png", "magic.png", "folder.png", "nowhere.png"})
        EXPECT_FALSE(hasLowAlpha((sources_ / name).string())) << name;
    EXPECT_FALSE(hasLowAlpha(""));
    EXPECT_FALSE(hasLowAlpha(std::string("a\0b", 3)));
    EXPECT_FALSE(hasLowAlpha(std::string(1 << 20, 'x')));
    EXPECT_STREQ(vips_error_buffer(), "") << "nothing is left behind";
}

TEST_F(AlphaTest, SurvivesDamage) {
    TestImage<std::uint8_t> image{64, 64, 4, {}};
    for (int i = 0; i < 64 * 64 * 4; ++i)
        image.samples.push_back(static_cast<std::uint8_t>((i * 7919) >> 3 | 64));
    EXPECT_FALSE(hasLow(image));
    const std::string whole = readFile(sources_ / "a.png");
    ASSERT_GT(whole.size(), 200U);
    for (std::size_t length = 0; length < whole.size(); length += whole.size() / 20) {
        writeFile(sources_ / "cut.png", whole.substr(0, length));
        hasLowAlpha((sources_ / "cut.png").string());
    }
    std::string damaged = whole;
    damaged[20] = '\xFF';  // a width of 255 million pixels, with a checksum that does not fit
    writeFile(sources_ / "damaged.png", damaged);
    EXPECT_FALSE(hasLowAlpha((sources_ / "damaged.png").string()));
}

TEST_F(AlphaTest, LooksAgainAtAFileThatWasReplaced) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(hasLow(pixel({1, 2, 3, 0})));
        EXPECT_FALSE(hasLow(pixel({1, 2, 3, 255})));
    }
}

TEST_F(AlphaTest, TakesBracketsInFoldersForWhatTheyAre) {
    for (const char* folder : {"a[1]", "[b", "c]", "d,e", "f:g"}) {
        std::filesystem::create_directory(sources_ / folder);
        EXPECT_TRUE(hasLow(pixel({1, 2, 3, 0}), (std::string(folder) + "/a.png").c_str())) << folder;
    }
}

}  // namespace
}  // namespace velinor
