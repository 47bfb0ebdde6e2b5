#include "materials/alpha_test.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <system_error>

namespace velinor {
namespace {

struct Release {
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using ImageRef = std::unique_ptr<VipsImage, Release>;

constexpr int kAlphaBand = 3;

ImageRef alphaHistogram(VipsImage* image) {
    VipsImage* histogram = nullptr;
    if (vips_hist_find(image, &histogram, "band", kAlphaBand, nullptr) != 0) return nullptr;
    return ImageRef(histogram);
}

// The bins of the lowest quarter of the range, for samples of that format.
int lowBins(VipsBandFormat format) {
    return format == VIPS_FORMAT_UCHAR ? 64 : format == VIPS_FORMAT_USHORT ? 16384 : 0;
}

// Whether one of the first `bins` bins is not empty. A histogram ends behind the largest value present: bins
// that are not there are empty.
bool hasCount(VipsImage* histogram, int bins) {
    const void* data = vips_image_get_data(histogram);
    if (data == nullptr) return false;
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    const auto present = static_cast<std::size_t>(std::min(bins, vips_image_get_width(histogram)));
    return std::any_of(bytes, bytes + present * VIPS_IMAGE_SIZEOF_ELEMENT(histogram),
                       [](std::uint8_t byte) { return byte != 0; });
}

bool isRegularFile(const std::string& path) {
    if (path.find('\0') != std::string::npos) return false;
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);  // opening a pipe would wait for its other end
}

// The library keeps opened files by their names and would give one again after it has been replaced. Its
// operation to drop them all is for the end of the program; shrinking the store to nothing empties it, too.
void forgetOpenedFiles() {
    const int most = vips_cache_get_max();
    vips_cache_set_max(0);
    vips_cache_set_max(most);
}

bool hasLowAlphaInPng(const std::string& path) {
    if (vips_foreign_is_a("pngload", path.c_str()) == 0) return false;
    const ImageRef image(vips_image_new_from_file(path.c_str(), nullptr));
    if (!image || vips_image_hasalpha(image.get()) == 0) return false;
    const ImageRef histogram = alphaHistogram(image.get());
    return histogram && hasCount(histogram.get(), lowBins(vips_image_get_format(image.get())));
}

}  // namespace

bool hasLowAlpha(const std::string& path) {
    const bool isLow = isRegularFile(path) && hasLowAlphaInPng(path);
    forgetOpenedFiles();
    vips_error_clear();
    return isLow;
}

}  // namespace velinor
