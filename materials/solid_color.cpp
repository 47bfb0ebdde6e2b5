#include "materials/solid_color.h"

#include <vips/vips.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>
#include <system_error>

#include "base/text.h"
#include "materials/texture_placement.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr int kEdge = 10;
constexpr int kBands = 4;
constexpr std::size_t kBytes = std::size_t{kEdge} * kEdge * kBands;
constexpr std::uint32_t kPauseMilliseconds = 100;

std::int32_t quantise(float component) {
    using Limits = std::numeric_limits<std::int32_t>;
    constexpr float kBeyond = 2147483648.0F;  // the first float that no 32-bit integer holds
    const float scaled = component * 255.0F;
    if (std::isnan(scaled)) return 0;
    if (scaled >= kBeyond) return Limits::max();
    if (scaled < -kBeyond) return Limits::min();
    return static_cast<std::int32_t>(scaled);
}

std::unique_ptr<std::uint8_t[]> pixelsOf(const QuantisedColor& color) {
    std::unique_ptr<std::uint8_t[]> pixels(new (std::nothrow) std::uint8_t[kBytes]);
    if (pixels == nullptr) vips_error_exit(nullptr);
    for (std::size_t i = 0; i < kBytes; ++i)
        pixels[i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(color[i % kBands]) & 0xFFU);
    return pixels;
}

// A cut-off image under its final name would pass for a whole one.
void reportFailure(const MaterialWriterContext& context, const fs::path& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
    std::string reason = vips_error_buffer();
    while (reason.ends_with('\n'))
        reason.pop_back();
    reportOnce(context, MessageId::fileNotWritten, utf8Path(path), reason);
    vips_error_clear();
}

void writeSolidColor(const MaterialWriterContext& context, const QuantisedColor& color,
                     const fs::path& path) {
    const std::unique_ptr<std::uint8_t[]> pixels = pixelsOf(color);
    VipsImage* image =
        vips_image_new_from_memory(pixels.get(), kBytes, kEdge, kEdge, kBands, VIPS_FORMAT_UCHAR);
    bool isWritten = false;
    if (image != nullptr) {
        image->Type = VIPS_INTERPRETATION_sRGB;
        isWritten = vips_image_write_to_file(image, utf8Path(path).c_str(), nullptr) == 0;
    }
    if (isWritten) {
        std::error_code error;
        const std::uintmax_t bytes = fs::file_size(path, error);
        context.report.addWritten(path, error ? 0 : bytes);
        context.placed.noteGenerated(path);
    } else {
        reportFailure(context, path);
    }
    context.host.Sleep(kPauseMilliseconds);
    if (image != nullptr) g_object_unref(image);
}

}  // namespace

QuantisedColor quantise(const Color& color) {
    return {quantise(color.red), quantise(color.green), quantise(color.blue), quantise(color.alpha)};
}

std::string solidColorFileName(const QuantisedColor& color) {
    char name[100];
    std::snprintf(name, sizeof name, "%03d%03d%03d%03d%s", color[0], color[1], color[2], color[3], ".png");
    return name;
}

std::string placeSolidColor(const MaterialWriterContext& context, const Color& color) {
    const QuantisedColor quantised = quantise(color);
    std::string name = solidColorFileName(quantised);
    const fs::path path = asNarrowFile(context.folders.resourcesFolder) / name;
    if (!targetExists(path)) {
        writeSolidColor(context, quantised, path);
        return name;
    }
    const auto source = context.placed.sourceOf(path);
    if (source && !source->empty()) reportEqualNames(context, name, *source, std::filesystem::path());
    return name;
}

}  // namespace velinor
