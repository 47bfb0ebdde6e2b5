// Where an export of the host runs its tools.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "platform/error_text.h"
#include "platform/temporary_folder.h"
#include "platform/tool_runner.h"

namespace velinor {

// Runs tools in a folder of their own, since they leave logs where they run; the host's current folder is
// none of their business. Where none can be made, no tool starts. The folder is there from the first tool
// until `remove`.
class ToolFolder final : public ToolRunner {
  public:
    explicit ToolFolder(std::function<void()> whileWaiting) : whileWaiting_(std::move(whileWaiting)) {}

    ToolRun run(const ToolCommand& command) override {
        try {
            if (!folder_) folder_.emplace();
        } catch (const std::system_error& error) {
            return {ToolRun::End::notStarted, 0,
                    "no folder can be made for it to run in: " + errorText(error.code())};
        }
        return SystemToolRunner(folder_->path(), whileWaiting_).run(command);
    }

    void remove() { folder_.reset(); }

  private:
    std::function<void()> whileWaiting_;
    std::optional<TemporaryFolder> folder_;
};

}  // namespace velinor
