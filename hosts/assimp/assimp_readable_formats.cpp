// What can be read through the library, and what is lost on the way.
#include <assimp/importerdesc.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/import/import_text.h"

namespace velinor {
namespace {

using Texts = std::vector<std::string>;

struct FormatFacts {
    std::string_view name;  // as formatName gives it
    Texts refused;
    Texts lost;
};

constexpr const char* kUserProperties = "user properties";
constexpr const char* kSmoothing = "smoothing groups (the normals in the file stay)";
constexpr const char* kUnits = "the unit of length (numbers stay as they are)";
constexpr const char* kHiddenAndLayers = "hidden nodes, layers, selection";
constexpr const char* kInstances = "instances (each becomes a mesh of its own)";
constexpr const char* kLightsAndCameras = "lights and cameras";
constexpr const char* kHierarchy = "the hierarchy of nodes";
constexpr const char* kUntold = "more than this, perhaps: few files of this kind were tried";
constexpr const char* kMaterialIds = "material IDs and names of multi-materials";

const std::vector<FormatFacts>& knownFacts() {
    static const std::vector<FormatFacts> kFacts{
        {"Autodesk FBX",
         {"version 6.1 and earlier"},
         {"the property Visibility (Show is taken), layers, selection",
          "materials of instances where they differ from those of the first", kMaterialIds, kSmoothing,
          "absolute paths of textures (they are looked for by name)", "shapes of area lights", kUnits}},
        {"glTF2",
         {},
         {"layers, selection", "clear coat, sheen, transmission, ambient occlusion",
          "uses of a camera by all nodes but the last", kMaterialIds}},
        {"glTF", {".glb files of version 1"}, {"layers, selection", "specular colours", kMaterialIds}},
        {"Collada",
         {"UTF-16 text"},
         {kUserProperties, kHiddenAndLayers, "shapes of area lights", kMaterialIds, kSmoothing, kUnits}},
        {"Wavefront Object",
         {"UTF-16 text"},
         {kUserProperties, kHiddenAndLayers, kInstances, kLightsAndCameras, kHierarchy, kSmoothing,
          "the object of faces after a group that is opened again"}},
        {"Discreet 3DS",
         {},
         {kUserProperties, kHiddenAndLayers, kInstances,
          "the roll of cameras, and directions of animated ones", "the placement of what hangs on a camera",
          kSmoothing}},
        {"Direct3D XFile", {}, {kUserProperties, kHiddenAndLayers, kInstances, kLightsAndCameras}},
        {"Stereolithography (STL)", {}, {"all but the triangles of one mesh"}},
        {"Stanford Polygon Library (PLY)", {}, {"all but the triangles and texture coordinates of one mesh"}},
        {"OFF", {}, {"all but the triangles of one mesh"}},
        {"Blender 3D (http://www.blender3d.org)",
         {"files of recent versions of Blender"},
         {kUserProperties, kHiddenAndLayers, "materials made of nodes", "modifiers"}},
        {"Irrlicht Scene", {"most files"}, {kUserProperties, kHiddenAndLayers}},
        {"Irrlicht Mesh", {"most files"}, {kUserProperties, kHiddenAndLayers, kLightsAndCameras}},
        {"Industry Foundation Classes (IFC)", {}, {kUserProperties, kHiddenAndLayers, kLightsAndCameras}},
    };
    return kFacts;
}

std::vector<ReadableFormat> listFormats() {
    const auto importer = makeImporter();
    std::vector<ReadableFormat> formats;
    for (std::size_t i = 0; i < importer->GetImporterCount(); ++i) {
        const aiImporterDesc* reader = importer->GetImporterInfo(i);
        if (reader == nullptr) continue;
        ReadableFormat format{formatName(*reader), endingsOf(*reader), {}, {}};
        const auto facts = std::ranges::find(knownFacts(), format.name, &FormatFacts::name);
        if (facts == knownFacts().end()) {
            format.lost = {kUserProperties, kHiddenAndLayers, kUntold};
        } else {
            format.refused = facts->refused;
            format.lost = facts->lost;
        }
        formats.push_back(std::move(format));
    }
    std::ranges::sort(formats, {},
                      [](const ReadableFormat& format) { return std::tie(format.endings, format.name); });
    return formats;
}

}  // namespace

const std::vector<ReadableFormat>& assimpFormats() {
    static const std::vector<ReadableFormat> kFormats = listFormats();
    return kFormats;
}

bool canReadWithAssimp(const std::filesystem::path& file) {
    const std::string ending = lowerCase(utf8Path(file.extension()));
    if (ending.size() < 2) return false;
    return std::ranges::any_of(assimpFormats(), [&](const ReadableFormat& format) {
        return std::ranges::find(format.endings, ending.substr(1)) != format.endings.end();
    });
}

}  // namespace velinor
