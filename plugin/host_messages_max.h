// How an export speaks to its user: through the host's log and the host's message box.
#pragma once

#include "base/report.h"

namespace velinor {

// Writes everything that the report holds to the host's log.
void logReport(const Report& report);

// Shows the errors and warnings of the report, and waits until the user has seen them. Does nothing where
// there are none.
void showReport(const Report& report);

}  // namespace velinor
