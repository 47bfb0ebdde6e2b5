// One export from beginning to end. Phases come in a fixed order and hand their results on in ExportContext.
// A phase that fails does not stop the others; only file-system errors of the package's folders and errors of
// the host do.
#include <clocale>
#include <functional>

#include "base/text.h"
#include "descriptors/scene_descriptor.h"
#include "descriptors/webtable_descriptor.h"
#include "geometry/mesh_conversion.h"
#include "materials/image_library.h"
#include "materials/material_script.h"
#include "materials/sky_material.h"
#include "platform/path_text.h"
#include "platform/text_file.h"
#include "plugin/exporter.h"
#include "plugin/mesh_passes.h"
#include "plugin/mesh_references.h"
#include "plugin/package_descriptor.h"
#include "scene/scene_collection.h"

namespace velinor {
namespace {

constexpr int kSuccess = 1;

// Writes one descriptor: what `writeText` gives, and the line feed that ends the file. A file that cannot be
// opened does not keep the writer from running, since what it reports is wanted all the same.
void writeDescriptor(const std::filesystem::path& path, const std::function<void(TextSink&)>& writeText,
                     Report& report) {
    TextFile file(asNarrowFile(path));
    writeText(file);
    file.write("\n");
    if (file.close()) {
        report.addWritten(path, file.bytesWritten());
    } else {
        report.add(MessageId::fileNotWritten, utf8Path(path), file.error());
    }
}

}  // namespace

int tolvex::DoExport(const host::MCHAR* name, host::ExpInterface* /*ei*/, host::Interface* /*i*/,
                     int suppressPrompts, std::uint32_t /*options*/) {
    std::setlocale(LC_ALL, "C");  // every number has a point

    if (suppressPrompts == 0) {
        const DialogResult result = environment_.dialog == nullptr
                                        ? DialogResult::notCreated
                                        : environment_.dialog->run(settings, environment_.report);
        if (result == DialogResult::cancelled) return kSuccess;
        if (result == DialogResult::notCreated)
            environment_.report.add(MessageId::dialogNotShown, "options dialog");
    }

    PreparePackageFolders(toPath(name));
    startImageLibrary(narrowPath(context.folders.hostFolder));

    context.scene = environment_.host.GetIGameInterface();
    if (!context.scene->InitialiseIGame(false))
        environment_.report.add(MessageId::sceneNotEnumerated, utf8Path(toPath(name)));
    // Both are appended to, and a host may export twice with one exporter.
    context.nodes.clear();
    context.materialMap.clear();
    collectScene({*environment_.host.GetInstanceMgr(), settings, context.patterns, context.nodes,
                  environment_.report, environment_.progress},
                 *context.scene);

    WriteDescriptorFiles();

    ExportMeshes();  // a failure among them does not stop what follows
    if (settings.exportMaterials) ExportMaterials();
    if (settings.cleanExportFolder) CleanExportFolder();
    return kSuccess;
}

void tolvex::PreparePackageFolders(const std::filesystem::path& fileName) {
    context.folders = packageFoldersFor(fileName, environment_.hostExecutable);
    // Told before what follows from it: meshes that are not converted.
    if (settings.exportGeometry) reportMissingTools(context.folders, settings, environment_.report);
    createPackageFolders(context.folders);
}

bool tolvex::WriteDescriptorFiles() {
    const std::filesystem::path& folder = context.folders.exportFolder;
    Report& report = environment_.report;

    environment_.progress.beginPhase("Writing index.jsx", context.nodes.objectNodes.size());
    writeDescriptor(
        folder / "index.jsx",
        [&](TextSink& text) {
            writeSceneDescriptor(context.nodes.rootRecord, settings, text, report, environment_.progress);
        },
        report);
    writeDescriptor(
        folder / "where.json",
        [&](TextSink& text) { text.write(BuildPackageDescriptor(settings, context.nodes)); }, report);
    writeDescriptor(
        folder / "webtables.json",
        [&](TextSink& text) {
            text.write(buildWebtablesJson(context.nodes.webtableNodes, context.patterns.numericSuffixPattern,
                                          report));
        },
        report);
    return true;
}

bool tolvex::ExportMeshes() {
    const bool areExported = exportMeshes({context.folders, settings, environment_.host, environment_.tools,
                                           context.materialMap, environment_.report, environment_.progress},
                                          context.nodes.meshNodes);
    reportMissingMeshes(context.nodes.rootRecord, settings, context.folders.resourcesFolder,
                        environment_.report);
    return areExported;
}

void tolvex::ExportMaterials() {
    PlacedFiles placed;
    const MaterialWriterContext writer{context.folders,     settings, environment_.host,
                                       environment_.report, placed,   environment_.progress};
    std::uint64_t scripts = 0;
    for (const auto& [material, group] : context.materialMap)
        scripts += group.size();
    environment_.progress.beginPhase("Writing materials", scripts);
    for (const auto& [material, group] : context.materialMap) {
        for (const MaterialVariant& variant : group)
            writeMaterialScript(writer, material, variant);
    }
    writeSkyMaterial(writer);
}

void tolvex::CleanExportFolder() {
    removeIntermediateMeshes(context.folders.resourcesFolder);
}

}  // namespace velinor
