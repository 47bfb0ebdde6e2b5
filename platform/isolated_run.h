// Running code that may crash, hang or eat memory without going down with it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// What the isolated code may use up.
struct IsolationLimits {
    std::uint64_t memoryBytes = std::uint64_t{4} << 30U;  // address space; on Windows, memory of its own
    unsigned processorSeconds = 60;  // from the start, or from the last call of renewProcessorTime

    bool operator==(const IsolationLimits&) const = default;
};

// How an isolated run ended.
struct IsolatedRun {
    enum class End {
        finished,     // the work returned
        crashed,      // e.g. a memory error, or an exception that left the work
        timeLimit,    // it used up its processor time
        memoryLimit,  // it asked for more memory than it may have, or than there is
    };
    End end = End::finished;
    // What ended it, in the system's terms: "signal 11", "exception 0xC0000005"; empty where it left by
    // itself.
    std::string cause;
};

// The cause where a process sends what no work can have sent.
inline constexpr const char* kImpossibleMessage = "a message of impossible size";

// Hands a message from the isolated code to its caller. Messages are any bytes.
using SendMessage = std::function<void(std::string_view)>;

// A work that can be run in a process of its own. It knows of its caller what the input says and nothing
// else: Windows has no way to copy a process, so a fresh one is started there, which finds the work by its
// name. Works are therefore constants of a file, there before main() begins.
class IsolatedWork {
  public:
    // What it prints is dropped. It must catch its own exceptions, apart from std::bad_alloc.
    using Function = void (*)(std::string_view input, const SendMessage& send);

    // `name` is unique in the program, lives as long, and has no blanks or quotes.
    IsolatedWork(const char* name, Function function) noexcept;
    IsolatedWork(const IsolatedWork&) = delete;
    IsolatedWork& operator=(const IsolatedWork&) = delete;
    ~IsolatedWork() = default;

    std::string_view name() const { return name_; }
    void run(std::string_view input, const SendMessage& send) const { function_(input, send); }

    // The program's work of that name; null where there is none.
    static const IsolatedWork* find(std::string_view name);

  private:
    const char* name_;
    Function function_;
    const IsolatedWork* next_;
};

// Runs `work` on `input` in a process of its own. Each message that it sends arrives at `receive` here, in
// order, while it runs. `whileWaiting` is called a few times a second while no message comes. An exception
// from it or from `receive` ends the other process and is passed on. Throws std::system_error where no
// process can be started.
IsolatedRun runIsolated(
    const IsolatedWork& work, std::string_view input, const std::function<void(std::string_view)>& receive,
    const IsolationLimits& limits, const std::function<void()>& whileWaiting = [] {});

// For isolated code that has come a step further: its processor time is counted anew from here. So a limit
// that ends what hangs does not end what has much to do. Cheap.
void renewProcessorTime(const IsolationLimits& limits);

// The first thing that a program does that runs works: where the program was started as the other process of
// a run, this runs the work and ends the process; otherwise it returns. `arguments` are those of the program,
// without its name.
void runIsolatedWorkIfAsked(const std::vector<std::string>& arguments);

}  // namespace velinor
