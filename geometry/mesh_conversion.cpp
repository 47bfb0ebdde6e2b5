#include "geometry/mesh_conversion.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "base/text.h"
#include "geometry/tool_commands.h"
#include "platform/path_text.h"
#include "platform/text_file.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The files of one mesh.
struct MeshFiles {
    MeshFiles(const fs::path& resources, const std::string& baseName)
        : xml(resources / (baseName + ".mesh.xml")),
          binary(resources / (baseName + ".mesh")),
          collision(resources / (baseName + ".mesh_phy.obj")) {}

    fs::path xml;
    fs::path binary;
    fs::path collision;
};

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

// Like isThere, but does not take trouble for absence.
bool isThereForSure(const fs::path& path) {
    std::error_code error;
    const bool isThere = fs::exists(path, error);
    if (error) throw fs::filesystem_error("exists", path, error);
    return isThere;
}

// Records have a fixed length, which cuts long names short and fills up short ones with zero bytes. The names
// of successive records can run together; readers count bytes. Text mode makes two bytes of the line feed on
// Windows, so there a record with one has 9 on the disk.
void addFailureRecord(const fs::path& log, const std::string& baseName, Report& report) {
    constexpr std::size_t kRecordSize = 8;
    std::string record = baseName + "\n";
    record.resize(kRecordSize);
    TextFile file(log, TextFile::Mode::append);
    file.write(record);
    if (!file.close()) report.add(MessageId::fileNotWritten, utf8Path(log), file.error());
}

// Notes a file that a tool left. That it is there proves little: tools leave empty and cut-off files.
void reportOutput(const fs::path& file, const ToolRun& run, Report& report) {
    std::error_code error;
    const std::uintmax_t bytes = fs::file_size(file, error);
    report.addWritten(file, error ? 0 : bytes);
    const std::string name = utf8Path(file.filename());
    if (!error && bytes == 0) {
        report.add(MessageId::toolOutputEmpty, name, describe(run));
    } else if (!hasSucceeded(run)) {
        report.add(MessageId::toolFailed, name, describe(run));
    }
}

void makeBinaryMesh(const MeshConversionContext& context, const std::string& baseName,
                    const MeshFiles& files) {
    const ToolRun run =
        context.tools.run(converterCommand(context.folders.pluginFolder, files.xml, files.binary));
    if (isThere(files.binary)) return reportOutput(files.binary, run, context.report);
    addFailureRecord(context.folders.resourcesFolder / "failed_mesh.txt", baseName, context.report);
    context.report.add(MessageId::meshNotConverted, utf8Path(files.binary.filename()), describe(run));
}

void makeCollisionMesh(const MeshConversionContext& context, const std::string& baseName,
                       std::int32_t faceCount, const MeshFiles& files) {
    constexpr int kAttempts = 3;
    constexpr int kLastAttempt = kAttempts - 1;
    const ExportSettings& settings = context.settings;
    std::optional<ToolRun> run;
    for (int attempt = 0; attempt < kAttempts && !isThereForSure(files.collision); ++attempt) {
        std::string option;
        if (settings.autoParams && attempt < kLastAttempt) {
            option = decimationOption(decimationValue(faceCount, settings.polycountGoal, attempt));
        } else {
            option = fallbackOption(settings.fallbackQuality);
            attempt = kLastAttempt;
        }
        run = context.tools.run(
            processorCommand(context.folders.pluginFolder, files.xml, option, files.collision));
    }
    if (isThereForSure(files.collision)) {
        if (run) reportOutput(files.collision, *run, context.report);
        return;
    }
    addFailureRecord(context.folders.resourcesFolder / "failed_physics.txt", baseName, context.report);
    context.report.add(MessageId::collisionMeshNotMade, utf8Path(files.collision.filename()),
                       run ? describe(*run) : "it was there a moment ago");
}

}  // namespace

bool convertMesh(const MeshConversionContext& context, const std::string& baseName, std::int32_t faceCount) {
    const MeshFiles files(context.folders.resourcesFolder, baseName);
    makeBinaryMesh(context, baseName, files);
    if (context.settings.generatePhysicalMeshes) makeCollisionMesh(context, baseName, faceCount, files);
    return true;
}

void reportMissingTools(const PackageFolders& folders, const ExportSettings& settings, Report& report) {
    const auto requireTool = [&report](const fs::path& tool) {
        if (!isThere(tool)) {
            report.add(MessageId::toolMissing, utf8Path(tool));
        } else if (!hasNarrowForm(tool)) {
            report.add(MessageId::toolPathNotNarrow, utf8Path(tool));
        }
    };
    requireTool(meshConverterPath(folders.pluginFolder));
    if (settings.generatePhysicalMeshes) requireTool(meshProcessorPath(folders.pluginFolder));
}

}  // namespace velinor
