#include "cli/report_json.h"

#include "base/text.h"
#include "cli/json_text.h"

namespace velinor {
namespace {

using nlohmann::ordered_json;

ordered_json countsJson(const ExportCounts& counts) {
    return {{"objects", counts.objects},
            {"meshes", counts.meshes},
            {"lights", counts.lights},
            {"cameras", counts.cameras},
            {"cameraBounds", counts.cameraBounds},
            {"webtables", counts.webtables}};
}

ordered_json totalsJson(const Report& report) {
    return {{"errors", report.count(Severity::error)},
            {"skipped", report.count(Severity::skipped)},
            {"warnings", report.count(Severity::warning)},
            {"notes", report.count(Severity::note)}};
}

ordered_json messageJson(const ReportEntry& entry) {
    const Message& catalogued = message(entry.id);
    return {{"code", catalogued.code},  {"severity", severityName(catalogued.severity)},
            {"subject", entry.subject}, {"detail", entry.detail},
            {"text", catalogued.text},  {"advice", catalogued.advice}};
}

}  // namespace

void writeReportJson(const ExportSummary& summary, TextSink& text) {
    JsonObjectWriter document(text);
    document.member("package", utf8Path(summary.package));
    document.list("files", [&](const auto& item) {
        for (const WrittenFile& file : summary.report.written()) {
            item({{"path", utf8Path(file.path)}, {"bytes", file.bytes}});
        }
    });
    document.member("found", countsJson(summary.counts));
    document.member("totals", totalsJson(summary.report));
    document.list("importNotes", [&](const auto& item) {
        for (const ImportNote& note : summary.notes.notes())
            item({{"subject", note.subject}, {"text", note.text}});
    });
    document.list("messages", [&](const auto& item) {
        for (const ReportEntry& entry : summary.report.entries())
            item(messageJson(entry));
    });
    document.finish();
}

}  // namespace velinor
