#include "hosts/assimp/image_folder.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

#include "base/text.h"
#include "hosts/assimp/assimp_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEndings[] = {"bmp", "dds",  "exr",  "gif", "hdr",  "iff",  "jpeg", "jpg",
                                         "ktx", "ktx2", "pcx",  "png", "pns",  "psd",  "rgb",  "sgi",
                                         "tga", "tif",  "tiff", "vda", "webp", "avif", "jp2",  "heic"};

// As a package spells it: the low byte of each unit, and "_" for what is not fit for a file name. A dot in
// front would hide the file or name a folder.
std::string fileStem(std::u16string_view wished) {
    constexpr std::size_t kLongest = 100;
    std::string stem = sanitiseName(lowBytes(wished.substr(0, kLongest)));
    if (stem.empty()) stem = "image";
    if (stem.front() == '.') stem.front() = '_';
    return stem;
}

[[noreturn]] void refuse(const fs::path& file) {
    throw fs::filesystem_error("write", file, std::error_code(errno, std::generic_category()));
}

}  // namespace

std::string imageEnding(std::u16string_view name) {
    name = lastPathComponent(name);
    const std::size_t dot = name.rfind(u'.');
    if (dot == std::u16string_view::npos || name.size() - dot > 5) return {};
    const std::string ending = lowerCase(toUtf8(name.substr(dot + 1)));
    return std::ranges::find(kEndings, ending) == std::end(kEndings) ? std::string() : ending;
}

std::u16string_view withoutImageEnding(std::u16string_view name) {
    const std::size_t size = imageEnding(name).size();
    return size == 0 ? name : name.substr(0, name.size() - size - 1);
}

fs::path ImageFolder::unusedFile(std::u16string_view wished, std::string_view ending) {
    const std::string stem = fileStem(lastPathComponent(wished));
    const std::string end = ending.empty() ? std::string() : "." + std::string(ending);
    for (unsigned& number = numbers_[lowerCase(stem + end)];;) {
        ++number;
        std::string name = stem;
        if (number > 1) name += "-" + std::to_string(number);
        name += end;
        std::error_code error;
        if (!used_.insert(lowerCase(name)).second) continue;
        if (!fs::exists(fs::symlink_status(folder_ / name, error))) return folder_ / name;
    }
}

void ImageFolder::write(const fs::path& file, std::string_view bytes) {
    std::error_code error;
    const bool isTaken = fs::exists(fs::symlink_status(file, error));  // it may be another's, or a trap
    errno = isTaken ? EEXIST : 0;
    if (isTaken) refuse(file);
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) refuse(file);
}

}  // namespace velinor
