// Small images for tests, and looks into images.
#pragma once

#include <gtest/gtest.h>
#include <vips/vips.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// The samples of an image, in rows, all channels of a pixel together.
struct Samples {
    int width = 0;
    int channels = 0;
    std::vector<int> values;

    bool operator==(const Samples&) const = default;
};

inline void PrintTo(const Samples& samples, std::ostream* stream) {
    *stream << samples.width << " wide, " << samples.channels
            << " channels: " << testing::PrintToString(samples.values);
}

// An image file of 8 bits a sample, or of 16.
inline std::string imageFile(const Samples& samples, const char* ending = ".png", bool isWide = false) {
    if (vips_init("test") != 0) ADD_FAILURE() << vips_error_buffer();
    std::vector<std::uint8_t> bytes(samples.values.begin(), samples.values.end());
    std::vector<std::uint16_t> words(samples.values.begin(), samples.values.end());
    const void* data = isWide ? static_cast<const void*>(words.data()) : bytes.data();
    const std::size_t size = isWide ? words.size() * 2 : bytes.size();
    const int height = static_cast<int>(samples.values.size()) / samples.width / samples.channels;
    VipsImage* image = vips_image_new_from_memory(data, size, samples.width, height, samples.channels,
                                                  isWide ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR);
    const bool isGrey = samples.channels < 3;
    image->Type = isWide ? (isGrey ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_RGB16)
                         : (isGrey ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB);
    void* held = nullptr;
    std::size_t heldSize = 0;
    if (vips_image_write_to_buffer(image, ending, &held, &heldSize, nullptr) != 0)
        ADD_FAILURE() << vips_error_buffer();
    g_object_unref(image);
    std::string file(static_cast<const char*>(held), heldSize);
    g_free(held);
    return file;
}

// What is in an image file.
inline Samples samplesOf(std::string_view file) {
    VipsImage* image = vips_image_new_from_buffer(file.data(), file.size(), "", nullptr);
    if (image == nullptr) {
        ADD_FAILURE() << vips_error_buffer();
        return {};
    }
    Samples samples{image->Xsize, image->Bands, {}};
    std::size_t size = 0;
    void* data = vips_image_write_to_memory(image, &size);
    if (image->BandFmt == VIPS_FORMAT_USHORT) {
        const auto* words = static_cast<const std::uint16_t*>(data);
        samples.values.assign(words, words + size / 2);
    } else {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        samples.values.assign(bytes, bytes + size);
    }
    g_free(data);
    g_object_unref(image);
    return samples;
}

}  // namespace velinor
