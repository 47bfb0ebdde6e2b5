// Running code that may crash, hang or eat memory without going down with it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace velinor {

// What the isolated code may use up.
struct IsolationLimits {
    std::uint64_t memoryBytes = std::uint64_t{4} << 30U;  // address space
    unsigned processorSeconds = 60;  // from the start, or from the last call of renewProcessorTime
};

// How an isolated run ended.
struct IsolatedRun {
    enum class End {
        finished,     // the work returned
        crashed,      // a signal ended it, e.g. a memory error
        timeLimit,    // it used up its processor time
        memoryLimit,  // it asked for more memory than it may have, or than there is
    };
    End end = End::finished;
    int signal = 0;  // the one that ended it; 0 where it left by itself
};

// Hands a message from the isolated code to its caller. Messages are any bytes.
using SendMessage = std::function<void(std::string_view)>;

// Runs `work` in a process of its own that shares nothing with this one but what it was before the call. Each
// message that `work` sends arrives at `receive` here, in order, while it runs. What `work` prints is
// dropped; it must catch its own exceptions, apart from std::bad_alloc. `whileWaiting` is called a few times
// a second while no message comes. An exception from it or from `receive` ends the other process and is
// passed on. Throws std::system_error where no process can be started.
IsolatedRun runIsolated(
    const std::function<void(const SendMessage&)>& work, const std::function<void(std::string_view)>& receive,
    const IsolationLimits& limits, const std::function<void()>& whileWaiting = [] {});

// For isolated code that has come a step further: its processor time is counted anew from here. So a limit
// that ends what hangs does not end what has much to do. Cheap.
void renewProcessorTime(const IsolationLimits& limits);

}  // namespace velinor
