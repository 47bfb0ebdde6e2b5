// How an export lets its user choose.
#pragma once

#include "base/report.h"
#include "plugin/export_settings.h"

namespace velinor {

// How the options dialog ended. The numbers are those of the host's modal dialogs.
enum class DialogResult { notCreated = -1, cancelled = 0, confirmed = 1 };

// The options dialog of an export, whatever stands for it: a window, or the options of a command line.
class OptionsDialog {
  public:
    virtual ~OptionsDialog() = default;

    // Lets the user change `settings`. Where the result is not `confirmed`, they hold what was stored on the
    // way. What could not be taken as it was given goes to `report`.
    virtual DialogResult run(ExportSettings& settings, Report& report) = 0;
};

}  // namespace velinor
