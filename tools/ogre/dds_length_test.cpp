#include "tools/ogre/dds_length.h"

#include <gmock/gmock.h>

#include "tools/ogre/byte_cursor.h"
#include "tools/ogre/dds_test_support.h"

namespace velinor {
namespace {

// Replaces four bytes of a header.
std::string with(std::string file, std::size_t at, const std::string& bytes) {
    return file.replace(at, bytes.size(), bytes);
}

TEST(DdsLength, IsThatOfAWholeCubeMap) {
    const std::string file = ddsCubeMap(8);
    const auto length = ddsLength(file);
    ASSERT_TRUE(length);
    EXPECT_EQ(length->bytes, file.size());
    EXPECT_EQ(length->bytes, 128U + 6U * 4U * (64 + 16 + 4 + 1));
    EXPECT_EQ(length->faces, 6U);
    EXPECT_TRUE(length->isCubeMap);
}

TEST(DdsLength, CountsBlocksOfCompressedImages) {
    const std::string header = with(with(ddsCubeMap(128), 80, bytesOf(std::uint32_t{4})), 84, "DXT1");
    EXPECT_EQ(ddsLength(header)->bytes, 65744U);
}

TEST(DdsLength, CountsTheFacesThatAreMarked) {
    EXPECT_EQ(ddsLength(ddsCubeMap(8, 0x7E00))->faces, 5U);
    EXPECT_EQ(ddsLength(ddsCubeMap(8, 0x200))->faces, 6U);
    EXPECT_FALSE(ddsLength(ddsCubeMap(8, 0))->isCubeMap);
}

TEST(DdsLength, IsUnknownForUnknownPixels) {
    EXPECT_EQ(ddsLength(with(with(ddsCubeMap(8), 80, bytesOf(std::uint32_t{4})), 84, "WXYZ")), std::nullopt);
}

TEST(DdsLength, RefusesHeadersThatContradictThemselves) {
    const std::string file = ddsCubeMap(8);
    EXPECT_THROW(ddsLength(file.substr(0, 127)), ByteFault);
    EXPECT_THROW(ddsLength(with(file, 0, "DDX ")), ByteFault);
    EXPECT_THROW(ddsLength(with(file, 4, bytesOf(std::uint32_t{125}))), ByteFault);
    EXPECT_THROW(ddsLength(with(file, 12, bytesOf(std::uint32_t{0}))), ByteFault) << "height";
    EXPECT_THROW(ddsLength(with(file, 28, bytesOf(std::uint32_t{0}))), ByteFault) << "no levels";
    EXPECT_THROW(ddsLength(with(file, 28, bytesOf(std::uint32_t{5}))), ByteFault) << "too many levels";
}

}  // namespace
}  // namespace velinor
