// The report of an export for a person.
#pragma once

#include "base/text_sink.h"
#include "cli/export_summary.h"

namespace velinor {

// Writes the package's path, its files, the counts, and everything that was skipped or looks wrong: one
// heading for each reason with what to do about it, below it a line for each node, material or file.
//
//     /home/anna/room
//     Files
//       index.jsx  120 bytes
//     Found 3 objects: 1 mesh, 1 light, 1 camera, 0 camera bounds, 0 web panels
//     Skipped (1)
//       the node is hidden. Unhide it, or export with "Export hidden" (--export-hidden).
//         Chair
void writeReportText(const ExportSummary& summary, TextSink& text);

}  // namespace velinor
