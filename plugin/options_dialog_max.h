// The options dialog in front of the host's windows.
#pragma once

#include "plugin/options_dialog.h"

namespace velinor {

// Owned by the window that is active when it opens. Off Windows there is no window: it cannot be created.
class HostOptionsDialog final : public OptionsDialog {
  public:
    DialogResult run(ExportSettings& settings, Report& report) override;
};

}  // namespace velinor
