#include "cli/report_text.h"

#include <map>
#include <string>
#include <vector>

#include "base/text.h"

namespace velinor {
namespace {

using EntriesByMessage = std::map<MessageId, std::vector<const ReportEntry*>>;

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

// A file's path inside the package; the whole path where it lies elsewhere.
std::string shownPath(const std::filesystem::path& file, const std::filesystem::path& package) {
    const std::filesystem::path relative = file.lexically_relative(package);
    return printable(utf8Path(relative.empty() || *relative.begin() == ".." ? file : relative));
}

void writeFiles(const ExportSummary& summary, TextSink& text) {
    text.write("Files\n");
    for (const WrittenFile& file : summary.report.written()) {
        text.write("  " + shownPath(file.path, summary.package) + "  " +
                   counted(file.bytes, "byte", "bytes") + "\n");
    }
}

void writeCounts(const ExportCounts& counts, TextSink& text) {
    text.write("Found " + counted(counts.objects, "object", "objects") + ": " +
               counted(counts.meshes, "mesh", "meshes") + ", " + counted(counts.lights, "light", "lights") +
               ", " + counted(counts.cameras, "camera", "cameras") + ", " +
               std::to_string(counts.cameraBounds) + " camera bounds, " +
               counted(counts.webtables, "web panel", "web panels") + "\n");
}

void writeEntry(const ReportEntry& entry, TextSink& text) {
    text.write("    " + printable(entry.subject));
    if (!entry.detail.empty()) text.write(": " + printable(entry.detail));
    text.write("\n");
}

void writeGroup(const Message& reason, const std::vector<const ReportEntry*>& entries, TextSink& text) {
    text.write("  " + std::string(reason.text) + ".");
    if (!reason.advice.empty()) text.write(" " + std::string(reason.advice));
    text.write("\n");
    for (const ReportEntry* entry : entries)
        writeEntry(*entry, text);
}

void writeSeverity(const Report& report, const EntriesByMessage& entries, Severity severity,
                   std::string_view heading, TextSink& text) {
    const std::size_t count = report.count(severity);
    if (count == 0) return;
    text.write(std::string(heading) + " (" + std::to_string(count) + ")\n");
    for (const auto& [id, group] : entries) {
        if (message(id).severity == severity) writeGroup(message(id), group, text);
    }
}

void writeImportNotes(const ImportNotes& notes, TextSink& text) {
    if (notes.notes().empty()) return;
    text.write("Notes on reading the scene (" + std::to_string(notes.notes().size()) + ")\n");
    for (const ImportNote& note : notes.notes()) {
        text.write("    " + printable(note.subject) + ": " + printable(note.text) + "\n");
    }
}

}  // namespace

void writeReportText(const ExportSummary& summary, TextSink& text) {
    EntriesByMessage entries;
    for (const ReportEntry& entry : summary.report.entries())
        entries[entry.id].push_back(&entry);

    text.write(printable(utf8Path(summary.package)) + "\n");
    writeFiles(summary, text);
    writeCounts(summary.counts, text);
    writeImportNotes(summary.notes, text);
    writeSeverity(summary.report, entries, Severity::error, "Errors", text);
    writeSeverity(summary.report, entries, Severity::skipped, "Skipped", text);
    writeSeverity(summary.report, entries, Severity::warning, "Warnings", text);
    writeSeverity(summary.report, entries, Severity::note, "Notes", text);
}

}  // namespace velinor
