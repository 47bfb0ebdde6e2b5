// The progress of an export in the host's own bar.
#pragma once

#include <chrono>
#include <string>

#include "base/progress.h"

namespace velinor {

// What leaves an export that the user stops.
struct ExportStopped {};

// Shows phases in the host's progress bar, from the first of them until `end`. Throws ExportStopped from
// either operation once the user asks the host to stop.
class HostProgress final : public Progress {
  public:
    HostProgress() = default;
    HostProgress(const HostProgress&) = delete;
    HostProgress& operator=(const HostProgress&) = delete;
    ~HostProgress() override = default;

    void beginPhase(std::string_view name, std::uint64_t total) override;
    void advance(std::uint64_t amount) override;

    // Takes the bar away, and the request to stop: it would end the next export at once. To be called at the
    // end of every export.
    void end();

  private:
    void show(int percent);

    std::u16string phase_;
    std::uint64_t total_ = 0;
    std::uint64_t done_ = 0;
    int percent_ = 0;
    bool isShown_ = false;
    std::chrono::steady_clock::time_point shownAt_;
};

}  // namespace velinor
