#include "plugin/module_max.h"

#include "plugin/options_dialog_max.h"

#include <windows.h>

#include "plugin/accelerators_off_max.h"
#include "plugin/options_window_max.h"

namespace velinor {

DialogResult HostOptionsDialog::run(ExportSettings& settings, Report& report) {
    const AcceleratorsOff keysAreOurs;
    return OptionsWindow(GetActiveWindow(), moduleHandle()).run(settings, report);
}

}  // namespace velinor
