// An exporter with all that surrounds it in the host.
#pragma once

#include "hosts/max/max_sdk.h"

#include <exception>
#include <string_view>

#include "hosts/max/max_host.h"
#include "plugin/exporter.h"
#include "plugin/host_progress_max.h"
#include "plugin/options_dialog_max.h"
#include "plugin/tool_folder_max.h"

namespace velinor {

class ExportSession {
  public:
    ExportSession();

    // What answers the host's questions about the exporter.
    host::SceneExport& exporter() { return exporter_; }

    // Runs one export to its end, whatever that is, and gives everything back to the host. Rethrows what is
    // for the host to know.
    void run(host::HostText name, bool isPromptSuppressed);

  private:
    std::exception_ptr exportTo(host::HostText name, bool isPromptSuppressed);
    void exportNow(const std::u16string& name, bool isPromptSuppressed);
    void fail(MessageId id, std::string_view detail);
    void finish();

    MaxHost host_;
    Report report_;
    HostProgress progress_;
    ToolFolder tools_;
    HostOptionsDialog dialog_;
    tolvex exporter_;
};

}  // namespace velinor
