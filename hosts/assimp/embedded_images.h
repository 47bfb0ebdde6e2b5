// The images that a scene file holds within itself.
#pragma once

#include <assimp/scene.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/image_conversion.h"

namespace velinor {

// Looks at the textures of one library scene, which must outlive it.
class EmbeddedImages {
  public:
    EmbeddedImages(const aiScene& scene, const SourceFile& source);

    // The number of the image that a texture's name means: "*3", or an image's own path, or else a path whose
    // last component is that of an image's own path. Of images of one name the first counts. In glTF a path
    // always means a file. Absent: the name means no such image.
    std::optional<unsigned> find(std::string_view reference) const;

    // The image's own name as the file has it, e.g. "..\wood.png"; empty where it has none.
    std::u16string name(unsigned image) const;

    // The ending for a file of the image: of its name, of its format as far as the library tells it, or of
    // its first bytes; "png" for one that is held as pixels. Empty: not known.
    std::string ending(unsigned image) const;

    // The image file, e.g. the bytes of a PNG; one that is held as pixels is made a PNG. Nothing, and a
    // fault, where the image is empty or damaged.
    ConvertedImage file(unsigned image) const;

  private:
    const aiTexture* texture(unsigned image) const;

    const aiScene& scene_;
    const SourceFile& source_;
    std::map<std::u16string, unsigned> byPath_;  // with "/" between components
    std::map<std::u16string, unsigned> byLastComponent_;
};

}  // namespace velinor
