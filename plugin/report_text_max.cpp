#include "plugin/report_text_max.h"

#include "base/text.h"

namespace velinor {
namespace {

constexpr std::size_t kLongestList = 12;

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// As many of the entries of that severity as there is still room for.
void addLines(const Report& report, Severity severity, std::size_t& room, std::string& text) {
    for (const ReportEntry& entry : report.entries()) {
        if (message(entry.id).severity != severity) continue;
        if (room == 0) return;
        --room;
        text += "\n" + reportLine(entry);
    }
}

}  // namespace

std::string reportLine(const ReportEntry& entry) {
    const Message& catalogued = message(entry.id);
    std::string line = printable(entry.subject) + ": " + std::string(catalogued.text);
    if (!entry.detail.empty()) line += " (" + printable(entry.detail) + ")";
    line += ".";
    if (!catalogued.advice.empty()) line += " " + std::string(catalogued.advice);
    return line;
}

std::string reportMessage(const Report& report) {
    const std::size_t errors = report.count(Severity::error);
    const std::size_t warnings = report.count(Severity::warning);
    if (errors + warnings == 0) return {};
    std::string text =
        "The export ended with " + counted(errors, "error") + " and " + counted(warnings, "warning") + ".\n";
    std::size_t room = kLongestList;
    addLines(report, Severity::error, room, text);
    addLines(report, Severity::warning, room, text);
    if (errors + warnings > kLongestList) text += "\n... and more; the log of 3ds Max has them all.";
    return text;
}

}  // namespace velinor
