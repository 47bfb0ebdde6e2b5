#include "hosts/assimp/bitmap_table.h"

#include <fstream>
#include <iterator>

#include "base/text.h"
#include "hosts/assimp/assimp_text.h"
#include "platform/error_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::u16string textOfPath(const fs::path& path) {
    return toUtf16Lossy(utf8Path(path));
}

std::string shown(std::u16string_view name) {
    return "\"" + oneLine(toUtf8(name)) + "\"";
}

// A larger file is no texture, and would take the memory of the scene.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{1} << 30U;

ConvertedImage readFile(const fs::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error) return {{}, errorText(error)};
    if (size > kLargestFile) return {{}, "it is too large"};
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream.is_open() || stream.bad()) return {{}, "it cannot be read"};
    return {std::move(bytes), {}};
}

}  // namespace

BitmapTable::BitmapTable(const aiScene& scene, const SourceFile& source, const AssimpOptions& options,
                         ImportNotes& notes)
    : source_(source),
      notes_(notes),
      embedded_(scene, source),
      files_(source.path, source.format == FileFormat::gltf ? TextureNames::uris : TextureNames::paths,
             options.assetFolders) {
    if (options.imageFolder) folder_.emplace(*options.imageFolder);
}

SnapshotRef BitmapTable::bitmap(std::string_view reference, const std::string& material) {
    return mapOf(bitmapName(image(reference, material), material));
}

SnapshotRef BitmapTable::normalBump(std::string_view reference, const std::string& material) {
    const SnapshotRef inner = bitmap(reference, material);
    const auto [found, isNew] = normalBumps_.try_emplace(inner, static_cast<SnapshotRef>(maps_.size()));
    if (isNew) maps_.push_back({u"Normal Bump", {}, {inner}});
    return found->second;
}

std::optional<SnapshotRef> BitmapTable::part(std::string_view reference, ImagePart part,
                                             std::string_view purpose, const std::string& material) {
    const Image& packed = image(reference, material);
    const bool isThere = packed.embedded || packed.file;
    if (!isThere || !folder_) return bitmap(reference, material);
    if (const auto found = parts_.find({packed.key, part}); found != parts_.end()) return found->second;
    const auto made = makePart(packed, part, purpose, material);
    parts_.emplace(std::pair(packed.key, part), made);
    return made;
}

std::optional<SnapshotRef> BitmapTable::makePart(const Image& image, ImagePart part, std::string_view purpose,
                                                 const std::string& material) {
    ConvertedImage converted = bytesOf(image);
    if (converted.bytes) converted = imagePart(*converted.bytes, part);
    if (!converted.fault.empty()) {
        notes_.add(material, "the packed image " + shown(image.name) + " cannot be taken apart for " +
                                 std::string(purpose) + ": " + oneLine(converted.fault) +
                                 "; it is used as it is, save it as PNG or JPEG");
        return mapOf(bitmapName(image, material));
    }
    if (!converted.bytes) return std::nullopt;
    std::u16string name(withoutImageEnding(image.name.starts_with(u'*') ? u"image" : image.name));
    name += u"-" + toUtf16Lossy(purpose);
    const fs::path file = folder_->unusedFile(name, "png");
    ImageFolder::write(file, *converted.bytes);
    return mapOf(textOfPath(file));
}

const BitmapTable::Image& BitmapTable::image(std::string_view reference, const std::string& material) {
    if (const auto found = images_.find(reference); found != images_.end()) return found->second;
    const Image& found = images_.emplace(reference, look(reference)).first->second;
    if (!found.embedded && !found.file) noteMissing(found, material);
    return found;
}

BitmapTable::Image BitmapTable::look(std::string_view reference) const {
    Image image;
    image.name = textureName(reference, source_);
    image.embedded = embedded_.find(reference);
    if (image.embedded) {
        image.key = "*" + std::to_string(*image.embedded);
        if (const std::u16string own = embedded_.name(*image.embedded); !own.empty()) image.name = own;
        return image;
    }
    image.file = files_.find(image.name);
    image.key = image.file ? utf8Path(*image.file) : std::string(reference);
    return image;
}

void BitmapTable::noteMissing(const Image& image, const std::string& material) {
    if (image.name.starts_with(u'*')) {
        return notes_.add(material, "the texture is image " + oneLine(toUtf8(image.name).substr(1)) +
                                        " of the scene file, which does not hold it");
    }
    notes_.add(material, missingBitmapText(image.name, files_));
}

std::u16string BitmapTable::bitmapName(const Image& image, const std::string& material) {
    if (image.file) return textOfPath(*image.file);
    if (!image.embedded || !folder_) return image.name;
    const auto [found, isNew] = bitmapNames_.try_emplace(image.key);
    if (isNew) found->second = writeEmbedded(*image.embedded, image.name, material);
    return found->second;
}

std::u16string BitmapTable::writeEmbedded(unsigned number, const std::u16string& name,
                                          const std::string& material) {
    const ConvertedImage file = embedded_.file(number);
    if (!file.bytes) {
        notes_.add(material, "the image " + shown(name) + " in the scene file cannot be used: " + file.fault);
        return name;
    }
    const bool isNamed = !name.starts_with(u'*');
    const std::u16string wished = isNamed ? name : u"image" + toUtf16Lossy(std::to_string(number));
    const fs::path path = folder_->unusedFile(withoutImageEnding(wished), embedded_.ending(number));
    ImageFolder::write(path, *file.bytes);
    return textOfPath(path);
}

ConvertedImage BitmapTable::bytesOf(const Image& image) const {
    return image.embedded ? embedded_.file(*image.embedded) : readFile(*image.file);
}

SnapshotRef BitmapTable::mapOf(const std::u16string& bitmap) {
    const auto [found, isNew] = bitmaps_.try_emplace(bitmap, static_cast<SnapshotRef>(maps_.size()));
    if (isNew) maps_.push_back({u"Bitmap", bitmap, {}});
    return found->second;
}

}  // namespace velinor
