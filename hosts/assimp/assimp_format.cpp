#include "hosts/assimp/assimp_format.h"

#include <assimp/BaseImporter.h>
#include <assimp/importerdesc.h>

#include <assimp/Importer.hpp>
#include <sstream>
#include <string_view>
#include <utility>

namespace velinor {
namespace {

// By the first ending that the library lists for a reader.
constexpr std::pair<std::string_view, FileFormat> kFormats[] = {
    {"fbx", FileFormat::fbx},         {"gltf", FileFormat::gltf},           {"dae", FileFormat::collada},
    {"obj", FileFormat::obj},         {"3ds", FileFormat::threeDs},         {"stl", FileFormat::upright},
    {"ply", FileFormat::upright},     {"off", FileFormat::upright},         {"blend", FileFormat::upright},
    {"amf", FileFormat::upright},     {"3mf", FileFormat::upright},         {"dxf", FileFormat::rotatedRoot},
    {"md2", FileFormat::rotatedRoot}, {"md5mesh", FileFormat::rotatedRoot}, {"mdc", FileFormat::rotatedRoot},
    {"iqm", FileFormat::rotatedRoot}, {"ifc", FileFormat::rotatedRoot},     {"x", FileFormat::yUp},
};

}  // namespace

std::vector<std::string> endingsOf(const aiImporterDesc& reader) {
    std::istringstream list(reader.mFileExtensions == nullptr ? "" : reader.mFileExtensions);
    std::vector<std::string> endings;
    for (std::string ending; list >> ending;)
        endings.push_back(std::move(ending));
    return endings;
}

std::string formatName(const aiImporterDesc& reader) {
    std::string name = reader.mName == nullptr ? "" : reader.mName;
    for (const std::string_view word : {" Importer", " Reader"}) {
        const auto at = name.find(word);
        if (at != std::string::npos) name.erase(at, word.size());
    }
    return name;
}

// The importer destroys the readers that it still has.
std::unique_ptr<Assimp::Importer> makeImporter() {
    auto importer = std::make_unique<Assimp::Importer>();
    const std::unique_ptr<Assimp::BaseImporter> ase(importer->GetImporter("ase"));
    if (ase) importer->UnregisterLoader(ase.get());
    return importer;
}

FileFormat formatLastRead(const Assimp::Importer& importer) {
    const int index = importer.GetPropertyInteger("importerIndex", -1);
    const aiImporterDesc* reader =
        index < 0 ? nullptr : importer.GetImporterInfo(static_cast<std::size_t>(index));
    if (reader == nullptr) return FileFormat::other;
    const auto endings = endingsOf(*reader);
    if (endings.empty()) return FileFormat::other;
    for (const auto& [ending, format] : kFormats) {
        if (endings.front() == ending) return format;
    }
    return FileFormat::other;
}

}  // namespace velinor
