// Isolated runs of systems that can copy a process.
#pragma once

#include <functional>
#include <string_view>

#include "platform/isolated_run.h"

namespace velinor {

// As runIsolated, for code that needs what its caller has: `work` runs in a copy of this process and shares
// nothing with it but what it was before the call.
IsolatedRun runForked(
    const std::function<void(const SendMessage&)>& work, const std::function<void(std::string_view)>& receive,
    const IsolationLimits& limits, const std::function<void()>& whileWaiting = [] {});

}  // namespace velinor
