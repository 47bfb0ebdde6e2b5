#include "hosts/assimp/image_conversion.h"

#include <vips/vips.h>

#include <algorithm>
#include <memory>
#include <new>

namespace velinor {
namespace {

// More pixels than a texture has: four times a square of 8192.
constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 28U;

struct Unref {
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using Image = std::unique_ptr<VipsImage, Unref>;

// What the library complains of, in one line.
std::string takeFault() {
    std::string fault = vips_error_buffer();
    vips_error_clear();
    while (!fault.empty() && fault.back() == '\n')
        fault.pop_back();
    std::ranges::replace(fault, '\n', ';');
    // That is no fault of the image.
    for (const char* shortage : {"out of memory", "creating thread"}) {
        if (fault.find(shortage) != std::string::npos) throw std::bad_alloc();
    }
    return fault.empty() ? "the image library gives no reason" : fault;
}

// Whether the library is ready. More threads would cost address space in a process that has little.
bool startLibrary() {
    static const bool isReady = [] {
        if (vips_init("tolvex") != 0) return false;
        vips_concurrency_set(1);
        vips_cache_set_max(0);
        vips_block_untrusted_set(TRUE);
        return true;
    }();
    return isReady;
}

bool isGrey(const VipsImage* image) {
    return image->Bands < 3;
}

bool isOfSize(const VipsImage* image) {
    return static_cast<std::uint64_t>(image->Xsize) * static_cast<std::uint64_t>(image->Ysize) <= kMostPixels;
}

bool isOfBytes(const VipsImage* image) {
    return image->BandFmt == VIPS_FORMAT_UCHAR || image->BandFmt == VIPS_FORMAT_USHORT;
}

Image load(std::string_view bytes) {
    return Image(vips_image_new_from_buffer(bytes.data(), bytes.size(), "", "access", VIPS_ACCESS_SEQUENTIAL,
                                            "fail_on", VIPS_FAIL_ON_ERROR, nullptr));
}

// Four inks become three colours.
Image asColours(Image image) {
    if (image->Type != VIPS_INTERPRETATION_CMYK) return image;
    VipsImage* colours = nullptr;
    if (vips_colourspace(image.get(), &colours, VIPS_INTERPRETATION_sRGB, nullptr) != 0) return nullptr;
    return Image(colours);
}

Image bands(const Image& image, int first, int count) {
    VipsImage* taken = nullptr;
    if (vips_extract_band(image.get(), &taken, first, "n", count, nullptr) != 0) return nullptr;
    return Image(taken);
}

Image inverted(const Image& image) {
    VipsImage* negative = nullptr;
    if (!image || vips_invert(image.get(), &negative, nullptr) != 0) return nullptr;
    return Image(negative);
}

Image partOf(const Image& image, ImagePart part) {
    const int colours = isGrey(image.get()) ? 1 : 3;
    switch (part) {
        case ImagePart::green:
            return bands(image, std::min(1, colours - 1), 1);
        case ImagePart::blue:
            return bands(image, colours - 1, 1);
        case ImagePart::invertedAlpha:
            return inverted(bands(image, image->Bands - 1, 1));
        case ImagePart::inverted:
            return inverted(bands(image, 0, colours));
    }
    return nullptr;
}

// `image` told to be grey or colour by its number of channels, as PNG.
ConvertedImage save(const Image& image) {
    const bool isWide = image->BandFmt == VIPS_FORMAT_USHORT;
    const VipsInterpretation grey = isWide ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_B_W;
    const VipsInterpretation colour = isWide ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB;
    VipsImage* told = nullptr;
    if (vips_copy(image.get(), &told, "interpretation", isGrey(image.get()) ? grey : colour, nullptr) != 0)
        return {{}, takeFault()};
    const Image owned(told);
    void* bytes = nullptr;
    std::size_t size = 0;
    if (vips_pngsave_buffer(told, &bytes, &size, "strip", TRUE, nullptr) != 0) return {{}, takeFault()};
    ConvertedImage converted{std::string(static_cast<const char*>(bytes), size), {}};
    g_free(bytes);
    return converted;
}

constexpr std::size_t kBgra = 4;  // bytes a pixel

bool isTransparent(std::span<const std::uint8_t> bgra) {
    for (std::size_t at = kBgra - 1; at < bgra.size(); at += kBgra) {
        if (bgra[at] != 255) return true;
    }
    return false;
}

// Red, green, blue, and alpha where asked for.
std::string rgbOf(std::span<const std::uint8_t> bgra, bool hasAlpha) {
    std::string samples;
    samples.reserve(bgra.size());
    for (std::size_t at = 0; at + kBgra <= bgra.size(); at += kBgra) {
        for (const std::size_t channel : {2, 1, 0})
            samples.push_back(static_cast<char>(bgra[at + channel]));
        if (hasAlpha) samples.push_back(static_cast<char>(bgra[at + 3]));
    }
    return samples;
}

}  // namespace

ConvertedImage imagePart(std::string_view image, ImagePart part) {
    if (!startLibrary()) return {{}, takeFault()};
    Image loaded = load(image);
    if (!loaded) return {{}, takeFault()};
    if (!isOfSize(loaded.get())) return {{}, "it is too large"};
    if (!isOfBytes(loaded.get())) return {{}, "its samples are neither of 8 nor of 16 bits"};
    if (part == ImagePart::invertedAlpha && !vips_image_hasalpha(loaded.get())) return {};
    const Image colours = asColours(std::move(loaded));
    const Image taken = colours ? partOf(colours, part) : nullptr;
    return taken ? save(taken) : ConvertedImage{{}, takeFault()};
}

ConvertedImage imageOfPixels(std::span<const std::uint8_t> bgra, std::uint32_t width) {
    const std::size_t count = bgra.size() / kBgra;
    if (count == 0 || width == 0 || count % width != 0) return {{}, "it is empty"};
    if (count > kMostPixels || width > VIPS_MAX_COORD || count / width > VIPS_MAX_COORD)
        return {{}, "it is too large"};
    if (!startLibrary()) return {{}, takeFault()};
    const bool hasAlpha = isTransparent(bgra);
    const std::string samples = rgbOf(bgra, hasAlpha);
    const Image image(vips_image_new_from_memory(samples.data(), samples.size(), static_cast<int>(width),
                                                 static_cast<int>(count / width), hasAlpha ? 4 : 3,
                                                 VIPS_FORMAT_UCHAR));
    return image ? save(image) : ConvertedImage{{}, takeFault()};
}

}  // namespace velinor
