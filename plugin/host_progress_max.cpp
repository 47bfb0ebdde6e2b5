#include "hosts/max/max_sdk.h"

#include "plugin/host_progress_max.h"

#include <algorithm>

#include "base/text.h"
#include "hosts/max/max_values.h"

namespace velinor {
namespace {

// How often the host gets to see its user's keys and clicks at least.
constexpr std::chrono::milliseconds kLongestSilence{100};

int percentOf(std::uint64_t done, std::uint64_t total) {
    if (total == 0) return 0;
    return static_cast<int>(100 * (static_cast<double>(std::min(done, total)) / static_cast<double>(total)));
}

}  // namespace

void HostProgress::beginPhase(std::string_view name, std::uint64_t total) {
    phase_ = toUtf16Lossy(name);
    total_ = total;
    done_ = 0;
    ::Interface* core = ::GetCOREInterface();
    if (core == nullptr) return;
    if (!isShown_) {
        core->SetCancel(0);
        isShown_ = core->ProgressStart(maxText(phase_.c_str()), true);
    }
    show(0);
}

void HostProgress::advance(std::uint64_t amount) {
    done_ += amount;
    const int percent = percentOf(done_, total_);
    if (percent != percent_ || std::chrono::steady_clock::now() - shownAt_ >= kLongestSilence) show(percent);
}

// Showing makes the host read its messages, the request to stop among them.
void HostProgress::show(int percent) {
    percent_ = percent;
    shownAt_ = std::chrono::steady_clock::now();
    ::Interface* core = isShown_ ? ::GetCOREInterface() : nullptr;
    if (core == nullptr) return;
    core->ProgressUpdate(percent, true, maxText(phase_.c_str()));
    if (core->GetCancel() != 0) throw ExportStopped();
}

void HostProgress::end() {
    ::Interface* core = ::GetCOREInterface();
    if (core == nullptr || !isShown_) return;
    isShown_ = false;
    core->ProgressEnd();
    core->SetCancel(0);
}

}  // namespace velinor
