// How long work tells that it moves. The exporter calls; a command line or a host's dialog shows.
#pragma once

#include <cstdint>
#include <string_view>

namespace velinor {

// Receives the progress of one export. Calls come on one thread, phases one after the other.
class Progress {
  public:
    virtual ~Progress() = default;

    // A phase begins; `total` is its amount of work in units of its own (nodes, bytes), 0 where it is
    // unknown. `name` is for people ("Collecting nodes") and lives at least until the next phase begins.
    virtual void beginPhase(std::string_view name, std::uint64_t total) = 0;

    // `amount` further units of the current phase are done. Called often: implementations must be cheap.
    virtual void advance(std::uint64_t amount) = 0;
};

// A part of a phase that is made of many equal steps: spreads its units of the phase evenly over them. Tells
// of every few thousandth step at least, so that a request to stop is seen in time.
class StepProgress {
  public:
    StepProgress(Progress& progress, std::uint64_t units, std::uint64_t steps)
        : progress_(progress), units_(units), steps_(steps) {}

    void step() {
        constexpr std::uint64_t kStepsAtOnce = 4096;
        if (++done_ % kStepsAtOnce == 0) tell(units_ * done_ / steps_);
    }

    // The whole part is done, however many steps there were.
    void finish() { tell(units_); }

  private:
    void tell(std::uint64_t units) {
        progress_.advance(units - told_);
        told_ = units;
    }

    Progress& progress_;
    std::uint64_t units_;
    std::uint64_t steps_;
    std::uint64_t done_ = 0;
    std::uint64_t told_ = 0;
};

// A Progress that nobody watches.
class NoProgress final : public Progress {
  public:
    void beginPhase(std::string_view /*name*/, std::uint64_t /*total*/) override {}
    void advance(std::uint64_t /*amount*/) override {}
};

}  // namespace velinor
