// Where an export of the host runs its tools.
#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/temporary_folder.h"
#include "platform/tool_runner.h"

namespace velinor {

// Runs tools in a folder of their own, since they leave logs where they run; the host's current folder is
// none of their business. The folder is there from the first tool until `remove`.
class ToolFolder final : public ToolRunner {
  public:
    explicit ToolFolder(std::function<void()> whileWaiting) : whileWaiting_(std::move(whileWaiting)) {}

    ToolRun run(const ToolCommand& command) override {
        if (!folder_) folder_.emplace();
        return SystemToolRunner(folder_->path(), whileWaiting_).run(command);
    }

    void remove() { folder_.reset(); }

  private:
    std::function<void()> whileWaiting_;
    std::optional<TemporaryFolder> folder_;
};

}  // namespace velinor
