// Progress for a person, on standard error.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/progress.h"

namespace velinor {

enum class ProgressStyle {
    silent,  // nothing at all
    lines,   // for files and pipes: a line every two seconds of work
    bar,     // for terminals: one line that is drawn again at most ten times a second
};

// The style that suits standard error.
ProgressStyle progressStyleOfStandardError();

// The line of a progress bar: "Collecting nodes  [#####     ]  50 %", without the percentage where `total` is
// 0.
std::string progressBarText(std::string_view phase, std::uint64_t done, std::uint64_t total);

// Shows progress on standard error, and is where a request to stop is noticed: advance() and beginPhase()
// throw Interrupted.
class ProgressBar final : public Progress {
  public:
    explicit ProgressBar(ProgressStyle style) : style_(style) {}
    ~ProgressBar() override { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // Tells at once what begins: "tolvex: reading room.fbx ...".
    void announce(const std::string& what);

    void beginPhase(std::string_view name, std::uint64_t total) override;
    void advance(std::uint64_t amount) override;

    // Takes the bar off the terminal, so that other text can follow.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;

    void showWhenDue();
    void show();

    ProgressStyle style_;
    std::string phase_;
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
    Clock::time_point lastShown_ = Clock::now();
    bool isDrawn_ = false;
};

}  // namespace velinor
