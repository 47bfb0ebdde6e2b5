// The exporter: what a host creates for an export, and everything that one export needs.
#pragma once

#include <cstdint>
#include <filesystem>

#include "base/progress.h"
#include "base/report.h"
#include "host/core.h"
#include "host/scene_export.h"
#include "platform/tool_runner.h"
#include "plugin/export_context.h"
#include "plugin/export_settings.h"
#include "plugin/options_dialog.h"

namespace velinor {

// What surrounds an exporter. Nothing is owned; everything outlives the exporter.
struct ExportEnvironment {
    host::Host& host;
    Report& report;
    Progress& progress;
    ToolRunner& tools;
    OptionsDialog* dialog = nullptr;       // null: no dialog can be shown
    std::filesystem::path hostExecutable;  // full path of the host program
};

// Exports scenes into packages. The host makes a fresh object for each export; one that serves several starts
// each anew and keeps its settings.
class tolvex final : public host::SceneExport {
  public:
    explicit tolvex(const ExportEnvironment& environment) : environment_(environment) {}

    int ExtCount() override;
    const host::MCHAR* Ext(int n) override;
    const host::MCHAR* LongDesc() override;
    const host::MCHAR* ShortDesc() override;
    const host::MCHAR* AuthorName() override;
    const host::MCHAR* CopyrightMessage() override;
    const host::MCHAR* OtherMessage1() override;
    const host::MCHAR* OtherMessage2() override;
    unsigned int Version() override;
    void ShowAbout(void* window) override;
    int SupportsOptions(int ext, std::uint32_t options) override;

    // Exports the host's scene into the package folder D/N, where `name` is D/N.E, an absolute path. Shows
    // the options dialog unless `suppressPrompts` is nonzero. Always returns 1, also where the user cancels.
    // Throws std::filesystem::filesystem_error where a folder cannot be made or cleaned, and passes on what
    // the host throws.
    int DoExport(const host::MCHAR* name, host::ExpInterface* ei, host::Interface* i, int suppressPrompts,
                 std::uint32_t options) override;

    // Derives the folders of the package from the file name that the user chose, and creates them.
    void PreparePackageFolders(const std::filesystem::path& fileName);

    // Removes what the package does not need once its meshes are converted.
    void CleanExportFolder();

    ExportSettings settings;
    ExportContext context;

  private:
    // Writes index.jsx, where.json and webtables.json into the package folder. Always true: a file that
    // cannot be written is told in the report.
    bool WriteDescriptorFiles();

    // Writes and converts the meshes, and fills the material map. False where one failed.
    bool ExportMeshes();

    // Writes what the meshes' materials need, and the sky. Throws std::filesystem::filesystem_error where a
    // texture cannot be placed in the package.
    void ExportMaterials();

    ExportEnvironment environment_;
};

}  // namespace velinor
