#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include "platform/tool_runner.h"

namespace velinor {
namespace {

constexpr std::size_t kOutputKept = std::size_t{8} << 10U;
constexpr int kTickMilliseconds = 50;

// One end of a pipe, closed with its owner.
class PipeEnd {
  public:
    explicit PipeEnd(int descriptor) : descriptor_(descriptor) {}
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;
    ~PipeEnd() { close(); }

    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }
    void close() {
        if (isOpen()) ::close(descriptor_);
        descriptor_ = -1;
    }

  private:
    int descriptor_;
};

// What a process is started with besides its arguments.
class SpawnSettings {
  public:
    SpawnSettings(int output, const std::optional<std::filesystem::path>& workingFolder) {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, output, STDERR_FILENO);
        if (workingFolder) ::posix_spawn_file_actions_addchdir_np(&actions_, workingFolder->c_str());

        // Signals that this process takes care of or ignores are not to be ignored by the tool.
        ::posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGPIPE, SIGXFSZ, SIGCHLD})
            sigaddset(&signals, signal);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    // Returns 0 or an error number.
    int spawn(pid_t& id, const std::vector<std::string>& arguments) const {
        std::vector<char*> pointers;
        pointers.reserve(arguments.size() + 1);
        for (const std::string& argument : arguments)
            pointers.push_back(
                const_cast<char*>(argument.c_str()));  // the call's old signature; it changes nothing
        pointers.push_back(nullptr);
        return ::posix_spawn(&id, pointers.front(), &actions_, &attributes_, pointers.data(), environ);
    }

  private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

// A running process, ended with its owner where it has not ended before.
class RunningTool {
  public:
    explicit RunningTool(pid_t id) : id_(id) {}
    RunningTool(const RunningTool&) = delete;
    RunningTool& operator=(const RunningTool&) = delete;
    ~RunningTool() {
        if (id_ == 0) return;
        ::kill(id_, SIGKILL);
        while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }

    // Its status once it has ended; as after success where nobody can tell: the system forgets children at
    // once where this process was started with the signal of their end ignored.
    std::optional<int> status() {
        int status = 0;
        const pid_t ended = ::waitpid(id_, &status, WNOHANG);
        if (ended == 0 || (ended < 0 && errno == EINTR)) return std::nullopt;
        id_ = 0;
        return ended < 0 ? 0 : status;
    }

  private:
    pid_t id_;
};

// Reads what there is to read, without waiting, and keeps the beginning of it. Stops now and then all the
// same: some tools print faster than anyone reads.
void readAvailable(PipeEnd& input, std::string& kept) {
    constexpr int kReadsAtOnce = 16;
    std::array<char, 4096> buffer{};
    for (int i = 0; i < kReadsAtOnce; ++i) {
        const ssize_t got = ::read(input.get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && errno == EAGAIN) return;
        if (got <= 0) return input.close();
        const std::size_t room = kOutputKept - kept.size();
        kept.append(buffer.data(), std::min(room, static_cast<std::size_t>(got)));
        if (static_cast<std::size_t>(got) < buffer.size()) return;
    }
}

// Waits for output, or for the end of it, or for the next tick. Once the output is closed the tool is about
// to end.
void waitForOutput(const PipeEnd& input) {
    pollfd polled{input.get(), POLLIN, 0};
    constexpr int kLastMoments = 1;
    ::poll(&polled, input.isOpen() ? 1 : 0, input.isOpen() ? kTickMilliseconds : kLastMoments);
}

ToolRun runOf(int status, std::string output) {
    if (WIFSIGNALED(status)) return {ToolRun::End::crashed, WTERMSIG(status), std::move(output)};
    return {ToolRun::End::exited, WEXITSTATUS(status), std::move(output)};
}

}  // namespace

ToolRun SystemToolRunner::run(const ToolCommand& command) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return {ToolRun::End::notStarted, 0, std::generic_category().message(errno)};
    PipeEnd input(ends[0]);
    PipeEnd output(ends[1]);
    ::fcntl(input.get(), F_SETFL, O_NONBLOCK);

    pid_t id = 0;
    const int error = SpawnSettings(output.get(), workingFolder_).spawn(id, command.arguments);
    if (error != 0) return {ToolRun::End::notStarted, 0, std::generic_category().message(error)};
    RunningTool tool(id);
    output.close();

    std::string kept;
    for (;;) {
        waitForOutput(input);
        const std::optional<int> status = tool.status();
        if (input.isOpen()) readAvailable(input, kept);
        if (status) return runOf(*status, std::move(kept));
        if (whileWaiting_) whileWaiting_();
    }
}

}  // namespace velinor
