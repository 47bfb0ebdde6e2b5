#include "hosts/assimp/assimp_reader.h"

#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <exception>
#include <memory>
#include <new>

#include "base/text.h"
#include "hosts/assimp/assimp_conversion.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/assimp_metadata.h"
#include "hosts/assimp/assimp_preflight.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/assimp/unread_parts.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

constexpr std::uint64_t kReadSteps = 100;

// Passes the library's progress on. An exception of the receiver ends the load and is kept, since the library
// must not see it.
class ReadProgress final : public Assimp::ProgressHandler {
  public:
    ReadProgress(Progress& progress, std::exception_ptr& failure) : progress_(progress), failure_(failure) {}

    bool Update(float fraction) override {
        if (failure_) return false;
        const auto step = static_cast<std::uint64_t>(std::clamp(fraction, 0.0F, 1.0F) * kReadSteps);
        try {
            progress_.advance(step > done_ ? step - done_ : 0);
        } catch (...) {
            failure_ = std::current_exception();
            return false;
        }
        done_ = std::max(done_, step);
        return true;
    }

  private:
    Progress& progress_;
    std::exception_ptr& failure_;
    std::uint64_t done_ = 0;
};

void setOptions(Assimp::Importer& importer) {
    // Animations and weights are not needed, and reading them aborts on some files.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_READ_ANIMATIONS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_READ_WEIGHTS, false);
    // No invented mesh in files that have nodes only.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    // The names of COLLADA nodes, not their IDs, in which brackets and blanks are lost.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
}

// Why the library did not load the file, in one line.
std::string reasonOf(const Assimp::Importer& importer) {
    const std::string reason = oneLine(importer.GetErrorString());
    if (reason.find("bad_alloc") != std::string::npos) return "the memory does not suffice";
    return reason.empty() ? "the library gives no reason" : reason;
}

// Loads the file and completes `source`. Triangulation is the only step: the others change names, meshes or
// nodes.
std::unique_ptr<aiScene> load(const std::filesystem::path& file, SourceFile& source, Progress& progress) {
    progress.beginPhase("Reading the scene file", kReadSteps);
    std::exception_ptr failure;
    const auto importer = makeImporter();
    setOptions(*importer);
    importer->SetProgressHandler(new ReadProgress(progress, failure));  // the importer owns it
    const aiScene* loaded = importer->ReadFile(utf8Path(file), aiProcess_Triangulate);
    if (failure) std::rethrow_exception(failure);
    if (loaded == nullptr) throw SceneError(source.shown + ": cannot be read: " + reasonOf(*importer));
    source.format = formatLastRead(*importer);
    source.isAsciiFbx = source.isAsciiFbx && source.format == FileFormat::fbx;
    std::unique_ptr<aiScene> scene(importer->GetOrphanedScene());
    if (const auto generator = metadataValue<aiString>(scene->mMetaData, AI_METADATA_SOURCE_GENERATOR))
        source.generator = textOf(*generator);
    return scene;
}

SceneSnapshot read(const std::filesystem::path& file, SourceFile& source, const AssimpOptions& options,
                   Progress& progress, ImportNotes& notes) {
    const std::unique_ptr<aiScene> loaded = load(file, source, progress);
    noteUnreadParts(source, notes);
    return snapshotOf(*loaded, source, options, progress, notes);
}

}  // namespace

SceneSnapshot readWithAssimp(const std::filesystem::path& file, const AssimpOptions& options,
                             Progress& progress, ImportNotes& notes) {
    SourceFile source = examineSceneFile(file);
    try {
        return read(file, source, options, progress, notes);
    } catch (const std::bad_alloc&) {
        throw SceneError(source.shown + ": cannot be read: the memory does not suffice");
    }
}

}  // namespace velinor
