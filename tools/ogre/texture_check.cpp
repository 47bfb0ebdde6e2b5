#include "tools/ogre/texture_check.h"

#include <OgreImage.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "tools/ogre/dds_length.h"
#include "tools/ogre/headless_ogre.h"
#include "tools/ogre/isolated_files.h"

namespace velinor {
namespace {

constexpr std::string_view kCubeFaces = "6";

std::string endingOf(const std::string& name) {
    const std::size_t point = name.rfind('.');
    std::string ending = point == std::string::npos ? "" : name.substr(point + 1);
    std::ranges::transform(ending, ending.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return ending;
}

// OGRE takes a DDS file that is too short for a whole one, and leaves the rest black.
void checkLength(const std::string& bytes, const SendFileMessage& send) {
    const auto length = ddsLength(bytes);
    if (length && bytes.size() != length->bytes) {
        send({"fault", "the file has " + std::to_string(bytes.size()) + " bytes, its header promises " +
                           std::to_string(length->bytes)});
    }
}

// Decodes images with OGRE and says how many faces they have: "faces", number. Faults are "fault", text.
class OgreImageReader {
  public:
    explicit OgreImageReader(const PackageFiles& package)
        : package_(package), ogre_([](const std::string& /*text*/) {}) {
        ogre_.loadImageCodecs();
    }

    void look(const std::string& name, const SendFileMessage& send) const {
        try {
            const std::string bytes = package_.readResource(name);
            const std::string ending = endingOf(name);
            if (ending == "dds") checkLength(bytes, send);
            Ogre::Image image;
            image.load(streamOver(name, bytes), ending);
            send({"faces", std::to_string(image.getNumFaces())});
        } catch (const ByteFault& fault) {
            send({"fault", fault.what()});
        } catch (const std::exception& error) {
            send({"fault", std::string("the image does not decode: ") + error.what()});
        }
    }

  private:
    const PackageFiles& package_;
    HeadlessOgre ogre_;
};

// The number of faces of each image that decodes.
std::map<std::string, std::string> decodeImages(const PackageFiles& package,
                                                const std::vector<std::string>& names, CheckReport& report) {
    std::map<std::string, std::string> faces;
    IsolatedFiles work;
    work.prepare = [&]() -> LookAtFile {
        const auto reader = std::make_shared<OgreImageReader>(package);
        return [reader](const std::string& name, const SendFileMessage& send) { reader->look(name, send); };
    };
    work.receive = [&](const std::string& name, const FileMessage& message) {
        if (message.at(0) == "fault") report.fault(kResources + name, message.at(1));
        if (message.at(0) == "faces") faces[name] = message.at(1);
    };
    work.broken = [&](const std::string& name, const std::string& end) {
        report.fault(kResources + name, "decoding it ends with " + end);
    };
    lookAtFiles(names, work);
    return faces;
}

std::string unitText(const TextureUse& use) {
    return use.unit.empty() ? "the texture unit" : "the texture unit \"" + use.unit + "\"";
}

}  // namespace

void checkTextures(const PackageFiles& package, const std::vector<TextureUse>& uses, CheckReport& report) {
    std::set<std::string> present;
    for (const TextureUse& use : uses) {
        if (use.texture.empty()) {
            report.fault(kResources + use.script, unitText(use) + " names no texture");
        } else if (package.hasResource(use.texture)) {
            present.insert(use.texture);
        } else {
            report.fault(kResources + use.script,
                         unitText(use) + " names \"" + use.texture + "\", which is not in the package");
        }
    }
    const auto faces = decodeImages(package, {present.begin(), present.end()}, report);
    std::set<std::string> told;
    for (const TextureUse& use : uses) {
        const auto image = faces.find(use.texture);
        if (!use.isCube || image == faces.end() || image->second == kCubeFaces) continue;
        if (!told.insert(use.texture).second) continue;
        report.fault(kResources + use.texture,
                     "it is used as a cube map and has " + image->second + " faces, not 6");
    }
}

}  // namespace velinor
