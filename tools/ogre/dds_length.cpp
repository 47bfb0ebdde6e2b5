#include "tools/ogre/dds_length.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <string>

#include "tools/ogre/byte_cursor.h"

namespace velinor {
namespace {

constexpr std::uint32_t fourCharacters(std::string_view text) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i)
        code |= std::uint32_t{static_cast<unsigned char>(text[i])} << (8 * i);
    return code;
}

// One way of storing pixels: whole pixels, or blocks of 4 x 4.
struct PixelStorage {
    std::uint32_t code;  // in the header's character code, or a number in the extended header
    std::uint32_t bytes;
    bool isBlock;
};

constexpr std::array kCharacterCodes{
    PixelStorage{fourCharacters("DXT1"), 8, true},
    PixelStorage{fourCharacters("DXT2"), 16, true},
    PixelStorage{fourCharacters("DXT3"), 16, true},
    PixelStorage{fourCharacters("DXT4"), 16, true},
    PixelStorage{fourCharacters("DXT5"), 16, true},
    PixelStorage{fourCharacters("ATI1"), 8, true},
    PixelStorage{fourCharacters("BC4U"), 8, true},
    PixelStorage{fourCharacters("ATI2"), 16, true},
    PixelStorage{fourCharacters("BC5U"), 16, true},
    PixelStorage{113, 8, false},   // four half floats
    PixelStorage{116, 16, false},  // four floats
};

// Numbers of the extended header: 8-bit RGBA and BGRA with their variants, half floats, floats.
constexpr std::array kExtendedCodes{
    PixelStorage{28, 4, false}, PixelStorage{29, 4, false}, PixelStorage{87, 4, false},
    PixelStorage{91, 4, false}, PixelStorage{88, 4, false}, PixelStorage{93, 4, false},
    PixelStorage{10, 8, false}, PixelStorage{2, 16, false},
};

std::optional<PixelStorage> findStorage(std::span<const PixelStorage> table, std::uint32_t code) {
    const auto found = std::ranges::find(table, code, &PixelStorage::code);
    if (found == table.end()) return std::nullopt;
    return *found;
}

struct Header {
    std::uint32_t height = 0;
    std::uint32_t width = 0;
    std::uint32_t levels = 1;
    std::uint32_t depth = 1;
    std::optional<PixelStorage> storage;
    bool isExtended = false;
    std::uint32_t caps2 = 0;
};

constexpr std::uint32_t kDepthFlag = 0x800000;
constexpr std::uint32_t kLevelsFlag = 0x20000;
constexpr std::uint32_t kCubeMap = 0x200;
constexpr std::uint32_t kFaces = 0xFC00;
constexpr std::uint32_t kCharacterCodeFlag = 0x4;

void readPixelFormat(ByteCursor& cursor, Header& header) {
    if (cursor.number<std::uint32_t>("the pixel format's size") != 32)
        throw ByteFault("the pixel format's size is not 32");
    const auto flags = cursor.number<std::uint32_t>("the pixel format");
    const auto code = cursor.number<std::uint32_t>("the pixel format");
    const auto bits = cursor.number<std::uint32_t>("the pixel format");
    cursor.take(16, "the pixel masks");
    if ((flags & kCharacterCodeFlag) == 0) {
        header.storage = PixelStorage{0, bits / 8, false};
    } else if (code == fourCharacters("DX10")) {
        header.isExtended = true;
    } else {
        header.storage = findStorage(kCharacterCodes, code);
    }
}

Header readHeader(ByteCursor cursor) {
    Header header;
    if (cursor.take(4, "the first four bytes") != "DDS ") throw ByteFault("the file is no DDS file");
    if (cursor.number<std::uint32_t>("the header's size") != 124)
        throw ByteFault("the header's size is not 124");
    const auto flags = cursor.number<std::uint32_t>("the header");
    header.height = cursor.number<std::uint32_t>("the height");
    header.width = cursor.number<std::uint32_t>("the width");
    cursor.number<std::uint32_t>("the pitch");
    const auto depth = cursor.number<std::uint32_t>("the depth");
    const auto levels = cursor.number<std::uint32_t>("the number of levels");
    if ((flags & kDepthFlag) != 0) header.depth = std::max(depth, 1U);
    if ((flags & kLevelsFlag) != 0 || levels != 0) header.levels = levels;
    cursor.take(44, "the header");
    readPixelFormat(cursor, header);
    cursor.number<std::uint32_t>("the capabilities");
    header.caps2 = cursor.number<std::uint32_t>("the capabilities");
    cursor.take(12, "the header");
    if (header.isExtended)
        header.storage = findStorage(kExtendedCodes, cursor.number<std::uint32_t>("the extended header"));
    return header;
}

void checkSizes(const Header& header) {
    const std::string size = std::to_string(header.width) + " x " + std::to_string(header.height);
    constexpr std::uint32_t kLargest = 65536;
    if (header.width == 0 || header.height == 0 ||
        std::max({header.width, header.height, header.depth}) > kLargest)
        throw ByteFault("the image has the size " + size);
    const auto most =
        static_cast<unsigned>(std::bit_width(std::max({header.width, header.height, header.depth})));
    if (header.levels == 0 || header.levels > most) {
        throw ByteFault("the header states " + std::to_string(header.levels) + " levels for an image of " +
                        size);
    }
}

std::uint64_t bytesOfLevels(const Header& header, const PixelStorage& storage) {
    std::uint64_t bytes = 0;
    for (std::uint32_t level = 0; level < header.levels; ++level) {
        const std::uint64_t width = std::max(header.width >> level, 1U);
        const std::uint64_t height = std::max(header.height >> level, 1U);
        const std::uint64_t depth = std::max(header.depth >> level, 1U);
        const std::uint64_t units = storage.isBlock ? ((width + 3) / 4) * ((height + 3) / 4) : width * height;
        bytes += units * depth * storage.bytes;
    }
    return bytes;
}

}  // namespace

std::optional<DdsLength> ddsLength(std::string_view file) {
    const Header header = readHeader(ByteCursor(file));
    checkSizes(header);
    if (!header.storage) return std::nullopt;
    DdsLength length;
    length.isCubeMap = (header.caps2 & kCubeMap) != 0;
    // A cube map that marks no face has them all.
    const auto marked = static_cast<unsigned>(std::popcount(header.caps2 & kFaces));
    if (length.isCubeMap) length.faces = marked == 0 ? 6 : marked;
    length.bytes = 128 + (header.isExtended ? 20 : 0) + length.faces * bytesOfLevels(header, *header.storage);
    return length;
}

}  // namespace velinor
