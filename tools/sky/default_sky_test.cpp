// The default sky as the build writes it.
#include "tools/sky/default_sky.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include "tools/sky/colour_test_support.h"
#include "tools/sky/dds_file.h"
#include "tools/sky/dds_reader.h"
#include "tools/sky/sky_colour.h"
#include "tools/sky/srgb.h"

namespace velinor {
namespace {

const std::string& builtFile() {
    static const std::string bytes = [] {
        std::ifstream file(TOLVEX_DEFAULT_SKY, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }();
    return bytes;
}

const std::vector<CubeLevel>& builtLevels() {
    static const std::vector<CubeLevel> levels = readDds(builtFile()).value();
    return levels;
}

std::uint32_t wordAt(const std::string& file, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;)
        word = word << 8 | static_cast<unsigned char>(file.at(offset + i));
    return word;
}

Rgb srgbOf(const Direction& direction) {
    const Rgb light = skyColour(normalised(direction));
    return {toSrgb(light[0]), toSrgb(light[1]), toSrgb(light[2])};
}

TEST(DefaultSky, HasTheHeaderOfACubeMapInDxt1) {
    struct Field {
        std::size_t offset;
        std::uint32_t value;
    };
    for (const auto& [offset, value] :
         {Field{0, 0x20534444},   Field{4, 124},          Field{8, 0x000A1007},  Field{12, 256},
          Field{16, 256},         Field{20, 32768},       Field{24, 0},          Field{28, 9},
          Field{76, 32},          Field{80, 4},           Field{84, 0x31545844}, Field{88, 0},
          Field{92, 0},           Field{96, 0},           Field{100, 0},         Field{104, 0},
          Field{108, 0x00401008}, Field{112, 0x0000FE00}, Field{116, 0},         Field{120, 0},
          Field{124, 0}}) {
        EXPECT_EQ(wordAt(builtFile(), offset), value) << "offset " << offset;
    }
}

TEST(DefaultSky, HasTheLengthThatItsHeaderAsksFor) {
    EXPECT_EQ(builtFile().size(), 262352U);
    EXPECT_EQ(ddsFile(makeCubeLevels(128, [](const Direction&) { return Rgb{}; })).size(), 65744U);
}

// A checksum, so that no compiler, flag or machine changes a byte unseen. A new look of the sky changes it,
// too.
TEST(DefaultSky, HasTheSameBytesEverywhere) {
    std::uint64_t hash = 14695981039346656037U;  // FNV-1a
    for (const unsigned char byte : builtFile())
        hash = (hash ^ byte) * 1099511628211U;
    EXPECT_EQ(hash, 9877559724192783014U);
}

TEST(DefaultSky, HasFourColoursInEveryBlock) {
    for (std::size_t offset = 128; offset < builtFile().size(); offset += 8) {
        const std::uint32_t ends = wordAt(builtFile(), offset);
        ASSERT_GT(ends & 0xFFFF, ends >> 16) << "offset " << offset;
    }
}

TEST(DefaultSky, ShowsTheSkyOfEachDirection) {
    const CubeLevel& level = builtLevels().front();
    double sum = 0;
    for (int face = 0; face < kCubeFaces; ++face) {
        for (int row = 0; row < level.size(); ++row) {
            for (int column = 0; column < level.size(); ++column) {
                const Direction direction = directionAt({face, level.centre(column), level.centre(row)});
                const double error = colourDistance(level.at(face, column, row), srgbOf(direction));
                // The blocks at the horizon and around the sun are the hardest.
                ASSERT_LT(error, 30) << "face " << face << ", column " << column << ", row " << row;
                sum += error;
            }
        }
    }
    EXPECT_LT(sum / (kCubeFaces * level.size() * level.size()), 1.2);
}

// The differences between texels on both sides of an edge, over all edges.
struct Seams {
    double largest = 0;
    double mean = 0;
};

Seams seamsOf(const CubeLevel& level) {
    Seams seams;
    const double edge = level.centre(level.size());
    const int last = level.size() - 1;
    for (int face = 0; face < kCubeFaces; ++face) {
        for (int i = 0; i <= last; ++i) {
            const double at = level.centre(i);
            const double steps[] = {
                colourDistance(level.at(face, last, i), level.towards(directionAt({face, edge, at}))),
                colourDistance(level.at(face, 0, i), level.towards(directionAt({face, -edge, at}))),
                colourDistance(level.at(face, i, last), level.towards(directionAt({face, at, edge}))),
                colourDistance(level.at(face, i, 0), level.towards(directionAt({face, at, -edge}))),
            };
            for (const double step : steps) {
                seams.largest = std::max(seams.largest, step);
                seams.mean += step / (4 * kCubeFaces * level.size());
            }
        }
    }
    return seams;
}

// Before the compression both sides are equal, but for the first level, where they are neighbours like any
// two texels. A block has four colours on a line, which is little where it shows a whole face from the sky to
// the ground.
TEST(DefaultSky, HasNoSeams) {
    for (const CubeLevel& level : builtLevels()) {
        const Seams seams = seamsOf(level);
        EXPECT_LT(seams.largest, level.size() > 8 ? 20 : 40) << "size " << level.size();
        EXPECT_LT(seams.mean, level.size() > 8 ? 4 : 12) << "size " << level.size();
    }
}

TEST(DefaultSky, HasItsSunWhereItIsSaidToBe) {
    const CubeLevel& level = builtLevels().front();
    EXPECT_EQ(placeOf(kSunDirection).face, 5);  // seen along package +Z
    EXPECT_GT(level.towards(kSunDirection)[2], 250);
    for (int face = 0; face < 5; ++face) {
        for (int row = 0; row < level.size(); ++row) {
            for (int column = 0; column < level.size(); ++column)
                ASSERT_LT(level.at(face, column, row)[0], 250) << "a second sun on face " << face;
        }
    }
}

TEST(DefaultSky, IsBrightAboveAndDarkerBelow) {
    const Rgb& up = builtLevels().back().at(2, 0, 0);
    const CubeLevel& faces = builtLevels()[6];  // 4 x 4
    EXPECT_GT(faces.at(2, 1, 1)[2], 180);
    EXPECT_LT(faces.at(3, 1, 1)[2], 120);
    // The last level is the mean of everything: the light between sky and ground, the same on all faces.
    for (int face = 0; face < kCubeFaces; ++face)
        EXPECT_EQ(builtLevels().back().at(face, 0, 0), up);
    EXPECT_GT(up[2], 130);
    EXPECT_LT(up[2], 190);
}

TEST(DdsReader, RefusesWhatIsNoWholeCubeMap) {
    const std::string whole = ddsFile(makeCubeLevels(4, [](const Direction&) { return Rgb{1, 0, 0}; }));
    EXPECT_TRUE(readDds(whole).has_value());
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(readDds(std::string_view(whole).substr(0, length)).has_value()) << length;
    EXPECT_FALSE(readDds(whole + "x").has_value());
    for (const std::size_t offset : {0, 12, 16, 28, 84}) {
        std::string broken = whole;
        broken[offset] ^= 0x7F;
        EXPECT_FALSE(readDds(broken).has_value()) << offset;
    }
}

TEST(CrossPicture, HasTheFacesInTheirPlaces) {
    CubeLevel level(1);
    for (int face = 0; face < kCubeFaces; ++face)
        level.at(face, 0, 0) = {'a' + face + 0.0, 'a' + face + 0.0, 'a' + face + 0.4};
    const std::string none(3, '\0');
    EXPECT_EQ(crossPicture(level),
              "P6\n4 3\n255\n" + none + "ccc" + none + none + "bbbeeeaaafff" + none + "ddd" + none + none);
}

}  // namespace
}  // namespace velinor
