#include <fcntl.h>
#include <poll.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <optional>
#include <system_error>

#include "platform/forked_run.h"

namespace velinor {
namespace {

constexpr int kFinished = 0;
constexpr int kOutOfMemory = 3;
constexpr int kBroken = 4;

[[noreturn]] void throwSystemError(const char* operation) {
    throw std::system_error(errno, std::generic_category(), operation);
}

// One end of a pipe, closed with its owner.
class Descriptor {
  public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }

    int get() const { return descriptor_; }
    void reset() {
        if (descriptor_ >= 0) ::close(descriptor_);
        descriptor_ = -1;
    }

  private:
    int descriptor_;
};

// The child, ended and waited for with its owner where that has not happened.
class ChildProcess {
  public:
    explicit ChildProcess(pid_t id) : id_(id) {}
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        if (id_ <= 0) return;
        ::kill(id_, SIGKILL);
        wait();
    }

    int wait() {
        int status = 0;
        while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
        }
        id_ = 0;
        return status;
    }

  private:
    pid_t id_;
};

void writeAll(int descriptor, const void* data, std::size_t size) {
    const auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written = ::write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) ::_exit(kBroken);  // the caller is gone
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
}

// False at the end of the stream, whether between messages or within one.
bool readAll(int descriptor, void* data, std::size_t size) {
    auto* bytes = static_cast<char*>(data);
    while (size > 0) {
        const ssize_t got = ::read(descriptor, bytes, size);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        bytes += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

void setLimit(decltype(RLIMIT_CPU) resource, rlim_t soft, rlim_t hard) {
    const rlimit limit{soft, hard};
    ::setrlimit(resource, &limit);
}

// The hard limit stays what it was: once lowered it could not be raised again.
void limitProcessorTime(rlim_t seconds) {
    rlimit limit{};
    if (::getrlimit(RLIMIT_CPU, &limit) != 0) return;
    limit.rlim_cur = std::min(seconds, limit.rlim_max);
    ::setrlimit(RLIMIT_CPU, &limit);
}

void applyLimits(const IsolationLimits& limits) {
    setLimit(RLIMIT_CORE, 0, 0);
    limitProcessorTime(limits.processorSeconds);
#ifndef __SANITIZE_ADDRESS__  // whose shadow alone takes terabytes of address space
    setLimit(RLIMIT_AS, limits.memoryBytes, limits.memoryBytes);
#endif
}

void silenceOutput() {
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nothing < 0) return;
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nothing, descriptor);
}

void restoreSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGPIPE, SIGXCPU, SIGABRT, SIGSEGV})
        ::signal(signal, SIG_DFL);
    ::signal(SIGXFSZ, SIG_IGN);  // a file that becomes too large is an error of the write
}

[[noreturn]] void runChild(const std::function<void(const SendMessage&)>& work, int output,
                           const IsolationLimits& limits) {
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // nobody waits for the result of a program that is gone
#endif
    restoreSignals();
    silenceOutput();
    applyLimits(limits);
    try {
        work([output](std::string_view message) {
            const std::uint64_t size = message.size();
            writeAll(output, &size, sizeof size);
            writeAll(output, message.data(), message.size());
        });
    } catch (const std::bad_alloc&) {
        ::_exit(kOutOfMemory);
    } catch (...) {
        ::_exit(kBroken);
    }
    ::_exit(kFinished);
}

// Returns when there is something to read, or the end of the stream.
void waitFor(int input, const std::function<void()>& whileWaiting) {
    constexpr int kMilliseconds = 200;
    pollfd waited{input, POLLIN, 0};
    for (;;) {
        const int ready = ::poll(&waited, 1, kMilliseconds);
        if (ready > 0 || (ready < 0 && errno != EINTR)) return;
        whileWaiting();
    }
}

// Goes on to the end of the stream. False at a size that no process of this memory can have sent: it has gone
// mad.
bool passMessages(int input, const std::function<void(std::string_view)>& receive, std::uint64_t largest,
                  const std::function<void()>& whileWaiting) {
    std::string message;
    for (;;) {
        waitFor(input, whileWaiting);
        std::uint64_t size = 0;
        if (!readAll(input, &size, sizeof size)) return true;
        if (size > largest) return false;
        message.resize(size);
        if (!readAll(input, message.data(), size)) return true;
        receive(message);
    }
}

IsolatedRun runOf(int status) {
    using End = IsolatedRun::End;
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        const std::string cause = "signal " + std::to_string(signal);
        if (signal == SIGXCPU) return {End::timeLimit, cause};
        // The system's way of ending what takes the last of its memory.
        if (signal == SIGKILL) return {End::memoryLimit, cause};
        return {End::crashed, cause};
    }
    switch (WEXITSTATUS(status)) {
        case kFinished:
            return {End::finished, {}};
        case kOutOfMemory:
            return {End::memoryLimit, {}};
        default:
            return {End::crashed, {}};
    }
}

}  // namespace

IsolatedRun runForked(const std::function<void(const SendMessage&)>& work,
                      const std::function<void(std::string_view)>& receive, const IsolationLimits& limits,
                      const std::function<void()>& whileWaiting) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throwSystemError("pipe");
    Descriptor input(ends[0]);
    Descriptor output(ends[1]);
    const pid_t id = ::fork();
    if (id < 0) throwSystemError("fork");
    if (id == 0) {
        input.reset();
        runChild(work, output.get(), limits);
    }
    ChildProcess child(id);
    output.reset();
    if (!passMessages(input.get(), receive, limits.memoryBytes, whileWaiting))
        return {IsolatedRun::End::crashed,
                kImpossibleMessage};  // and the child is ended: it may never by itself
    input.reset();
    return runOf(child.wait());
}

IsolatedRun runIsolated(const IsolatedWork& work, std::string_view input,
                        const std::function<void(std::string_view)>& receive, const IsolationLimits& limits,
                        const std::function<void()>& whileWaiting) {
    return runForked([&](const SendMessage& send) { work.run(input, send); }, receive, limits, whileWaiting);
}

void renewProcessorTime(const IsolationLimits& limits) {
    rusage used{};
    if (::getrusage(RUSAGE_SELF, &used) != 0) return;
    const auto seconds = static_cast<rlim_t>(used.ru_utime.tv_sec + used.ru_stime.tv_sec);
    limitProcessorTime(seconds + 1 + limits.processorSeconds);
}

// A copied process comes by its work without being asked.
void runIsolatedWorkIfAsked(const std::vector<std::string>& /*arguments*/) {}

}  // namespace velinor
