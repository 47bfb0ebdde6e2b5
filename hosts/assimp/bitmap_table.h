// The texture maps of a scene file, and the image files that they name.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/assimp/assimp_reader.h"
#include "hosts/assimp/embedded_images.h"
#include "hosts/assimp/image_conversion.h"
#include "hosts/assimp/image_folder.h"
#include "hosts/import/texture_files.h"

namespace velinor {

// Makes host maps of texture names, one for each file that they come to. A "Bitmap" names
// - a file that is found, by its absolute path;
// - an image of the scene file itself, by the path of a file that is written into options.imageFolder;
// without
//   such a folder by its own name;
// - what is not there as the scene file does, and a note, one for each name, says where it was looked for.
// The scene and `source` must outlive the table. Throws std::filesystem::filesystem_error where an image
// cannot be written.
class BitmapTable {
  public:
    BitmapTable(const aiScene& scene, const SourceFile& source, const AssimpOptions& options,
                ImportNotes& notes);

    // The "Bitmap" of a texture's name as the library holds it. `material` (UTF-8) is whom notes name.
    SnapshotRef bitmap(std::string_view reference, const std::string& material);

    // A "Normal Bump" with that "Bitmap".
    SnapshotRef normalBump(std::string_view reference, const std::string& material);

    // The "Bitmap" of an image that is made of a part of the named one and written into options.imageFolder
    // as NAME-`purpose`.png. Absent: the named image lacks the part. Where the image cannot be read, a note
    // says so and the named image itself is the answer; so it is without a folder.
    std::optional<SnapshotRef> part(std::string_view reference, ImagePart part, std::string_view purpose,
                                    const std::string& material);

    // Hands the maps over.
    std::vector<SnapshotMap> take() { return std::move(maps_); }

  private:
    // What a texture's name comes to; of neither kind where it is not there.
    struct Image {
        std::u16string name;                             // as the file has it
        std::string key;                                 // the same for names of one image
        std::optional<unsigned> embedded = {};           // an image of the scene file
        std::optional<std::filesystem::path> file = {};  // a file on disk
    };

    const Image& image(std::string_view reference, const std::string& material);
    Image look(std::string_view reference) const;
    void noteMissing(const Image& image, const std::string& material);
    std::u16string bitmapName(const Image& image, const std::string& material);
    std::u16string writeEmbedded(unsigned number, const std::u16string& name, const std::string& material);
    ConvertedImage bytesOf(const Image& image) const;
    std::optional<SnapshotRef> makePart(const Image& image, ImagePart part, std::string_view purpose,
                                        const std::string& material);
    SnapshotRef mapOf(const std::u16string& bitmap);

    const SourceFile& source_;
    ImportNotes& notes_;
    EmbeddedImages embedded_;
    TextureFiles files_;
    std::optional<ImageFolder> folder_;
    std::vector<SnapshotMap> maps_;
    std::map<std::string, Image, std::less<>> images_;   // by the name as the library holds it
    std::map<std::string, std::u16string> bitmapNames_;  // by the image's key
    std::map<std::pair<std::string, ImagePart>, std::optional<SnapshotRef>> parts_;  // by the image's key
    std::map<std::u16string, SnapshotRef> bitmaps_;
    std::map<SnapshotRef, SnapshotRef> normalBumps_;
};

}  // namespace velinor
