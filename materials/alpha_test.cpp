#include "materials/alpha_test.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>

#include "base/regular_file.h"
#include "base/text.h"

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

// The first thing that the library complains of while this exists. Of a damaged image it warns row by row;
// without this, the warnings go to standard error.
class Complaints {
  public:
    Complaints() : handler_(g_log_set_handler("VIPS", G_LOG_LEVEL_WARNING, keepFirst, this)) {
        vips_error_clear();
    }
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;
    ~Complaints() {
        g_log_remove_handler("VIPS", handler_);
        vips_error_clear();
    }

    // A call that failed says more than a warning.
    std::string first() {
        std::string error = vips_error_buffer();
        while (error.ends_with('\n'))
            error.pop_back();
        const std::lock_guard<std::mutex> lock(mutex_);
        return error.empty() ? warning_ : error;
    }

  private:
    // Called on the library's threads.
    static void keepFirst(const gchar* /*domain*/, GLogLevelFlags /*level*/, const gchar* text,
                          gpointer self) {
        auto& complaints = *static_cast<Complaints*>(self);
        const std::lock_guard<std::mutex> lock(complaints.mutex_);
        if (complaints.warning_.empty()) complaints.warning_ = text;
    }

    std::mutex mutex_;
    std::string warning_;
    guint handler_;
};

// The library keeps opened files by their names and would give one again after it has been replaced. Its
// operation to drop them all is for the end of the program; shrinking the store to nothing empties it, too.
void forgetOpenedFiles() {
    const int most = vips_cache_get_max();
    vips_cache_set_max(0);
    vips_cache_set_max(most);
}

bool hasLowAlpha(const std::string& path) {
    const ImageRef image(vips_image_new_from_file(path.c_str(), nullptr));
    if (!image || vips_image_hasalpha(image.get()) == 0) return false;
    const ImageRef histogram = alphaHistogram(image.get());
    return histogram && hasCount(histogram.get(), lowBins(vips_image_get_format(image.get())));
}

}  // namespace

AlphaAnswer testAlpha(const std::filesystem::path& path) {
    Complaints complaints;
    const std::string name = utf8Path(path);  // as the library takes it on every system
    if (!isRegularFile(path) || vips_foreign_is_a("pngload", name.c_str()) == 0) return {};
    const bool isLow = hasLowAlpha(name);
    forgetOpenedFiles();
    return {isLow, complaints.first()};
}

}  // namespace velinor
