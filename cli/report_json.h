// The report of an export for a program.
#pragma once

#include "base/text_sink.h"
#include "cli/export_summary.h"

namespace velinor {

// Writes one JSON object with the members "package", "files", "found", "totals", "importNotes" and
// "messages". The codes of the messages are those of the message catalogue.
void writeReportJson(const ExportSummary& summary, TextSink& text);

}  // namespace velinor
