// The options dialog as a window.
#pragma once

#include "plugin/options_dialog.h"
#include "plugin/setting_rules.h"

namespace velinor {

// Shows the dialog resource IDD_OPTIONS and runs it until the user is done. What the controls mean is decided
// by OptionsDialogModel.
class OptionsWindow final : public OptionsDialog {
  public:
    // `ownerWindow` (an HWND, or null) is disabled while the dialog is open; `module` (an HINSTANCE) is the
    // library that has the dialog and the manifest among its resources. Both must outlive the calls of run.
    OptionsWindow(void* ownerWindow, void* module);

    // The same with another idea of which maps exist than the disk's.
    OptionsWindow(void* ownerWindow, void* module, PathExists exists);

    // `notCreated` where the window could not be made. What `exists` throws comes out of here, with the
    // dialog closed.
    DialogResult run(ExportSettings& settings, Report& report) override;

  private:
    void* ownerWindow_;
    void* module_;
    PathExists exists_;
};

}  // namespace velinor
