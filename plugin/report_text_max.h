// A report as the host shows it: lines of its log, and the text of a message box.
#pragma once

#include <string>

#include "base/report.h"

namespace velinor {

// One entry on one line, in UTF-8: what, where, and what to do about it.
std::string reportLine(const ReportEntry& entry);

// The errors and warnings of a report, the first few of them in full, for a person to read in a window; empty
// where there are none.
std::string reportMessage(const Report& report);

}  // namespace velinor
