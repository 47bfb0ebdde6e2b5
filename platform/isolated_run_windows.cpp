// The other process is this program once more, started with a hidden first argument. It reads its limits and
// its input from standard input and writes its messages, each after its size, to standard output:
//
//     limits: memory in bytes, processor seconds (8 bytes each)       size of a message (8 bytes)
//     input, up to the end                                            message
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <system_error>
#include <thread>

#include "platform/child_process_windows.h"
#include "platform/isolated_run.h"
#include "platform/process_info.h"

namespace velinor {
namespace {

constexpr std::string_view kWorkArgument = "--isolated-work";

// Exit codes of the other process. Bit 29, in the highest byte, marks them as a program's own, so that no
// exception of the system has them.
constexpr DWORD kFinished = 0;
constexpr DWORD kOutOfMemory = 0xE0540001U;
constexpr DWORD kOutOfTime = 0xE0540002U;
constexpr DWORD kBroken = 0xE0540003U;

[[noreturn]] void leave(DWORD code) {
    TerminateProcess(GetCurrentProcess(), code);
    std::abort();  // never reached
}

// The sizes and limits that go through the pipes, as they lie in memory: both ends are one program.
struct Preamble {
    std::uint64_t memoryBytes;
    std::uint64_t processorSeconds;
};

// False where the other end is closed.
bool writeAll(HANDLE pipe, const void* data, std::size_t size) {
    const auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const auto piece = static_cast<DWORD>(std::min<std::size_t>(size, std::size_t{1} << 20U));
        DWORD written = 0;
        if (WriteFile(pipe, bytes, piece, &written, nullptr) == 0) return false;
        bytes += written;
        size -= written;
    }
    return true;
}

// What is used up, in hundred nanoseconds.
std::uint64_t processorTimeUsed() {
    FILETIME ignored{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(GetCurrentProcess(), &ignored, &ignored, &kernel, &user);
    const auto ticks = [](const FILETIME& time) {
        return std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime;
    };
    return ticks(kernel) + ticks(user);
}

constexpr std::uint64_t kTicksPerSecond = 10'000'000;

// When the isolated work has to be done, in ticks of processor time.
std::atomic<std::uint64_t> processorTimeEnd = std::numeric_limits<std::uint64_t>::max();

std::uint64_t memoryUsed() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return std::max<std::uint64_t>(counters.PrivateUsage, counters.WorkingSetSize);
}

// Ends this process when it has used up what it may. The system's own limit of a job's memory is not enforced
// everywhere, and that of its time could not be renewed from within.
[[noreturn]] void watch(std::uint64_t memoryBytes) {
    constexpr DWORD kMilliseconds = 5;
    for (;; Sleep(kMilliseconds)) {
        if (memoryUsed() > memoryBytes) leave(kOutOfMemory);
        if (processorTimeUsed() > processorTimeEnd) leave(kOutOfTime);
    }
}

// This process's end of a pipe, taken away from the streams of the C library.
Handle takeStream(DWORD stream) {
    HANDLE self = GetCurrentProcess();
    HANDLE copy = nullptr;
    if (DuplicateHandle(self, GetStdHandle(stream), self, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS) == 0)
        leave(kBroken);
    return Handle(copy);
}

void silenceStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        if (std::freopen("NUL", stream == stdin ? "r" : "w", stream) == nullptr) leave(kBroken);
    }
}

std::string readToEnd(HANDLE pipe) {
    std::string text;
    std::array<char, 4096> buffer{};
    DWORD got = 0;
    while (ReadFile(pipe, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr) != 0 && got > 0)
        text.append(buffer.data(), got);
    return text;
}

// Crashes end this process without a word or a window.
void crashQuietly() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

[[noreturn]] void runWork(const IsolatedWork& work) {
    crashQuietly();
    const Handle input = takeStream(STD_INPUT_HANDLE);
    const Handle output = takeStream(STD_OUTPUT_HANDLE);
    silenceStreams();
    const std::string bytes = readToEnd(input.get());
    Preamble limits{};
    if (bytes.size() < sizeof limits) leave(kBroken);
    bytes.copy(reinterpret_cast<char*>(&limits), sizeof limits);
    renewProcessorTime({limits.memoryBytes, static_cast<unsigned>(limits.processorSeconds)});
    try {
        std::thread(watch, limits.memoryBytes).detach();
        work.run(std::string_view(bytes).substr(sizeof limits), [&output](std::string_view message) {
            const std::uint64_t size = message.size();
            if (!writeAll(output.get(), &size, sizeof size) ||
                !writeAll(output.get(), message.data(), message.size()))
                leave(kBroken);  // the caller is gone
        });
    } catch (const std::bad_alloc&) {
        leave(kOutOfMemory);
    } catch (...) {
        leave(kBroken);
    }
    leave(kFinished);
}

// Holds the other process: ends it at the latest with its owner, and with this process however that ends.
class WorkProcess {
  public:
    WorkProcess(const std::wstring& commandLine, const ChildStreams& streams, std::uint64_t memoryBytes)
        : job_(CreateJobObjectW(nullptr, nullptr)) {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE |
                                                  JOB_OBJECT_LIMIT_PROCESS_MEMORY |
                                                  JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
        limits.ProcessMemoryLimit = memoryBytes;
        if (!job_.isOpen() || SetInformationJobObject(job_.get(), JobObjectExtendedLimitInformation, &limits,
                                                      sizeof limits) == 0)
            throwLastError("CreateJobObjectW");
        child_ = startChild(commandLine, nullptr, streams, CREATE_SUSPENDED);
        if (AssignProcessToJobObject(job_.get(), child_.process.get()) == 0) {
            const DWORD error = GetLastError();
            end();
            throw std::system_error(static_cast<int>(error), std::system_category(),
                                    "AssignProcessToJobObject");
        }
        ResumeThread(child_.thread.get());
    }
    WorkProcess(const WorkProcess&) = delete;
    WorkProcess& operator=(const WorkProcess&) = delete;
    ~WorkProcess() {
        if (!hasEnded(0)) end();
    }

    bool hasEnded(DWORD milliseconds) const { return waitForEnd(child_.process, milliseconds); }

    // Waits for its end.
    DWORD exitCode() const {
        hasEnded(INFINITE);
        return exitCodeOf(child_.process);
    }

    void end() const {
        TerminateProcess(child_.process.get(), kBroken);
        hasEnded(INFINITE);
    }

  private:
    Handle job_;
    Child child_;
};

// Takes the pipe's bytes apart into messages.
class MessageReader {
  public:
    explicit MessageReader(std::uint64_t largest) : largest_(largest) {}

    // Hands the whole messages of what has come to `receive`. False after a size that no process of this
    // memory can have sent: it has gone mad.
    bool pass(std::string& bytes, const std::function<void(std::string_view)>& receive) const {
        std::size_t at = 0;
        std::uint64_t size = 0;
        while (bytes.size() - at >= sizeof size) {
            bytes.copy(reinterpret_cast<char*>(&size), sizeof size, at);
            if (size > largest_) return false;
            if (bytes.size() - at - sizeof size < size) break;
            receive(std::string_view(bytes).substr(at + sizeof size, static_cast<std::size_t>(size)));
            at += sizeof size + static_cast<std::size_t>(size);
        }
        bytes.erase(0, at);
        return true;
    }

  private:
    std::uint64_t largest_;
};

// True at the end of the stream, false where what comes is no message.
bool passMessages(HANDLE pipe, const WorkProcess& process, const MessageReader& reader,
                  const std::function<void(std::string_view)>& receive,
                  const std::function<void()>& whileWaiting) {
    constexpr DWORD kPause = 2;  // milliseconds; pipes cannot be waited for
    constexpr ULONGLONG kTick = 200;
    ULONGLONG lastTick = GetTickCount64();
    std::string bytes;
    for (bool isOver = false; !isOver;) {
        isOver = process.hasEnded(0);
        for (std::size_t before = bytes.size();; before = bytes.size()) {
            if (!readAvailable(pipe, bytes)) isOver = true;
            if (bytes.size() == before) break;
            if (!reader.pass(bytes, receive)) return false;
        }
        if (GetTickCount64() - lastTick >= kTick) {
            whileWaiting();
            lastTick = GetTickCount64();
        }
        if (!isOver) process.hasEnded(kPause);
    }
    return true;
}

std::string hexadecimal(DWORD number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08lX", number);
    return text.data();
}

IsolatedRun runOf(DWORD exitCode) {
    using End = IsolatedRun::End;
    switch (exitCode) {
        case kFinished:
            return {End::finished, {}};
        case kOutOfMemory:
            return {End::memoryLimit, {}};
        case kOutOfTime:
            return {End::timeLimit, {}};
        case kBroken:
            return {End::crashed, {}};
        default:
            break;
    }
    if (isException(exitCode)) return {End::crashed, "exception " + hexadecimal(exitCode)};
    return {End::crashed, "exit status " + std::to_string(exitCode)};
}

std::wstring commandLineFor(const IsolatedWork& work) {
    std::wstring line = L"\"" + executablePath().native() + L"\" ";
    line.append(kWorkArgument.begin(), kWorkArgument.end());
    line += L' ';
    return line.append(work.name().begin(), work.name().end());
}

}  // namespace

IsolatedRun runIsolated(const IsolatedWork& work, std::string_view input,
                        const std::function<void(std::string_view)>& receive, const IsolationLimits& limits,
                        const std::function<void()>& whileWaiting) {
    PipeEnds inputPipe = makePipe();
    PipeEnds messagePipe = makePipe();
    const Handle nothing = openNothing();
    const WorkProcess process(commandLineFor(work),
                              {inputPipe.read.get(), messagePipe.write.get(), nothing.get()},
                              limits.memoryBytes);
    inputPipe.read.reset();
    messagePipe.write.reset();
    const Preamble preamble{limits.memoryBytes, limits.processorSeconds};
    // A process that is gone before it has read everything tells so by its exit code.
    if (writeAll(inputPipe.write.get(), &preamble, sizeof preamble))
        writeAll(inputPipe.write.get(), input.data(), input.size());
    inputPipe.write.reset();
    if (!passMessages(messagePipe.read.get(), process, MessageReader(limits.memoryBytes), receive,
                      whileWaiting)) {
        process.end();  // it may never by itself
        return {IsolatedRun::End::crashed, kImpossibleMessage};
    }
    messagePipe.read.reset();
    return runOf(process.exitCode());
}

void renewProcessorTime(const IsolationLimits& limits) {
    processorTimeEnd = processorTimeUsed() + limits.processorSeconds * kTicksPerSecond;
}

void runIsolatedWorkIfAsked(const std::vector<std::string>& arguments) {
    if (arguments.size() != 2 || arguments.front() != kWorkArgument) return;
    const IsolatedWork* work = IsolatedWork::find(arguments.back());
    if (work != nullptr) runWork(*work);
}

}  // namespace velinor
