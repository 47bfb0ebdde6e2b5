#include "plugin/options_dialog_max.h"

namespace velinor {

DialogResult HostOptionsDialog::run(ExportSettings& /*settings*/, Report& /*report*/) {
    return DialogResult::notCreated;
}

}  // namespace velinor
