// The command "export": reads the scene, runs the exporter on it, and shows its report. The package appears
// whole or not at all.
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

#include "base/normal_path.h"
#include "base/text.h"
#include "cli/commands.h"
#include "cli/export_summary.h"
#include "cli/interrupts.h"
#include "cli/package_replacement.h"
#include "cli/progress_bar.h"
#include "cli/report_json.h"
#include "cli/report_text.h"
#include "cli/scene_images.h"
#include "cli/scene_source.h"
#include "cli/standard_output.h"
#include "hosts/snapshot/snapshot_host.h"
#include "platform/path_text.h"
#include "platform/process_info.h"
#include "platform/temporary_folder.h"
#include "platform/tool_runner.h"
#include "plugin/exporter.h"
#include "plugin/setting_rules.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool pathExists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

// The options of the command line in place of the dialog: always confirmed, with the rules that the dialog
// enforces.
class CommandLineDialog final : public OptionsDialog {
  public:
    explicit CommandLineDialog(const ExportSettings& chosen) : chosen_(chosen) {}

    DialogResult run(ExportSettings& settings, Report& report) override {
        settings = chosen_;
        applySettingRules(settings, pathExists, report);
        return DialogResult::confirmed;
    }

  private:
    const ExportSettings& chosen_;
};

std::u16string hostText(const fs::path& path) {
    const auto text = toUtf16(utf8Path(path));
    if (text) return *text;
    throw CommandError(kNotRun, utf8Path(path) + ": is not valid UTF-8; rename the folder");
}

// Asked of the system folder by folder: a file has many names.
bool liesIn(const fs::path& file, const fs::path& folder) {
    std::error_code error;
    fs::path at = fs::canonical(file, error);
    if (error) at = normalPath(absolutePath(file));  // a server's share, which the library does not know
    for (fs::path above = at.parent_path(); above != at; above = at.parent_path()) {
        std::error_code ignored;
        if (fs::equivalent(above, folder, ignored)) return true;
        at = above;
    }
    return false;
}

// Files inside the package are opened by names in the code page of file names, and so are the tools given
// them.
void requireNarrowForm(const fs::path& package) {
    if (hasNarrowForm(package)) return;
    throw CommandError(kNotRun, utf8Path(package) +
                                    ": the path has letters that the system's code page of file names lacks; "
                                    "choose another TARGET");
}

void requirePossible(const fs::path& package) {
    const auto fault = exportFolderFault(package);
    if (fault) throw CommandError(kNotRun, utf8Path(package) + ": " + *fault + "; choose another TARGET");
}

// Replacing a package must not take away the scene that it is made of.
void requireSceneOutside(const ExportArguments& arguments, const fs::path& package) {
    if (!arguments.overwrite || arguments.scene == "-" || !liesIn(arguments.scene, package)) return;
    throw CommandError(kNotRun, utf8Path(arguments.scene) +
                                    ": lies in the package that --overwrite replaces, " + utf8Path(package) +
                                    "; move it elsewhere first");
}

// A file of the package that could not be written makes the whole package worthless.
void requireComplete(const Report& report) {
    for (const ReportEntry& entry : report.entries()) {
        const Message& catalogued = message(entry.id);
        if (catalogued.severity != Severity::error) continue;
        const std::string reason = entry.detail.empty() ? std::string(catalogued.text) : entry.detail;
        throw CommandError(kFailed,
                           "write: " + entry.subject + ": " + reason + ". " + std::string(catalogued.advice));
    }
}

ExportCounts countsOf(const CollectedScene& nodes) {
    return {nodes.objectNodes.size(), nodes.meshNodes.size(),         nodes.lightNodes.size(),
            nodes.cameraNodes.size(), nodes.cameraBoundsNodes.size(), nodes.webtableNodes.size()};
}

void pause(std::uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void writeResult(const ExportArguments& arguments, const ExportSummary& summary) {
    StandardOutput output;
    if (arguments.json) {
        writeReportJson(summary, output);
    } else if (arguments.quiet) {
        output.write(printable(utf8Path(summary.package)) + "\n");
    } else {
        writeReportText(summary, output);
    }
    output.finish();
}

}  // namespace

ExitStatus runExport(const ExportArguments& arguments) {
    requireImageLibrary();
    const fs::path target = normalPath(absolutePath(arguments.target));
    const std::u16string targetText = hostText(target);
    const fs::path program = executablePath();
    const fs::path package = normalPath(packageFoldersFor(target, program).exportFolder);
    requirePossible(package);
    requireNarrowForm(package);
    requireSceneOutside(arguments, package);

    ProgressBar progress(arguments.quiet ? ProgressStyle::silent : progressStyleOfStandardError());
    progress.announce("reading " + sceneName(arguments.scene) + " ...");
    SceneSource source = openScene(arguments.scene, progress, {SceneImages::extract, arguments.reading});
    linkBitmaps(source, package.parent_path());
    if (!arguments.reading.selected.empty() && !arguments.settings.selectionOnly)
        progress.announce("--select changes nothing of the package without --selection-only");

    const auto host = makeSnapshotHost(source.scene, source.folder, pause);
    Report report;
    CommandLineDialog dialog(arguments.settings);
    const TemporaryFolder toolFolder;  // tools leave logs where they run
    SystemToolRunner tools(toolFolder.path(), [&progress] { progress.advance(0); });
    tolvex exporter({*host, report, progress, tools, &dialog, program});
    exporter.settings = arguments.settings;

    rememberInterrupts();
    PackageReplacement replacement(package, arguments.overwrite);
    exporter.DoExport(targetText.c_str(), nullptr, nullptr, arguments.suppressPrompts ? 1 : 0, 0);
    requireComplete(report);
    const auto leftover = replacement.keep();
    if (leftover) progress.announce(*leftover);
    progress.clear();

    writeResult(arguments, {package, countsOf(exporter.context.nodes), report, source.notes});
    const bool isAnythingSkipped = report.count(Severity::skipped) > 0 || source.notes.hasLosses();
    return arguments.strict && isAnythingSkipped ? kFaultsFound : kDone;
}

}  // namespace velinor
