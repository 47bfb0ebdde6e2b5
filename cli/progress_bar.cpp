#include "cli/progress_bar.h"

#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "cli/interrupts.h"
#include "platform/terminal.h"

namespace velinor {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kBarWidth = 30;
constexpr auto kBarInterval = 100ms;
constexpr auto kLineInterval = 2s;
constexpr const char* kClearLine = "\r\x1b[K";

// 0 to 1; work beyond the total that was announced counts as done.
double fraction(std::uint64_t done, std::uint64_t total) {
    return std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
}

std::string percent(std::uint64_t done, std::uint64_t total) {
    return std::to_string(static_cast<int>(fraction(done, total) * 100)) + " %";
}

}  // namespace

ProgressStyle progressStyleOfStandardError() {
    return isErrorOutputTerminal() ? ProgressStyle::bar : ProgressStyle::lines;
}

std::string progressBarText(std::string_view phase, std::uint64_t done, std::uint64_t total) {
    std::string text = printable(phase);
    if (total == 0) return text + " ...";
    const auto filled = static_cast<std::size_t>(fraction(done, total) * kBarWidth);
    return text + "  [" + std::string(filled, '#') + std::string(kBarWidth - filled, ' ') + "]  " +
           percent(done, total);
}

void ProgressBar::announce(const std::string& what) {
    if (style_ == ProgressStyle::silent) return;
    clear();
    std::fprintf(stderr, "tolvex: %s\n", printable(what).c_str());
}

void ProgressBar::beginPhase(std::string_view name, std::uint64_t total) {
    throwIfInterrupted();
    phase_ = name;
    done_ = 0;
    total_ = total;
    showWhenDue();
}

void ProgressBar::advance(std::uint64_t amount) {
    throwIfInterrupted();
    done_ += amount;
    showWhenDue();
}

void ProgressBar::clear() {
    if (!isDrawn_) return;
    std::fputs(kClearLine, stderr);
    isDrawn_ = false;
}

void ProgressBar::showWhenDue() {
    if (style_ == ProgressStyle::silent) return;
    const auto interval =
        style_ == ProgressStyle::bar ? Clock::duration(kBarInterval) : Clock::duration(kLineInterval);
    const auto now = Clock::now();
    if (now - lastShown_ < interval) return;
    lastShown_ = now;
    show();
}

void ProgressBar::show() {
    if (style_ == ProgressStyle::lines) {
        const std::string share = total_ == 0 ? "..." : percent(done_, total_);
        std::fprintf(stderr, "tolvex: %s %s\n", printable(phase_).c_str(), share.c_str());
        return;
    }
    std::fprintf(stderr, "%s%s", kClearLine, progressBarText(phase_, done_, total_).c_str());
    isDrawn_ = true;
}

}  // namespace velinor
