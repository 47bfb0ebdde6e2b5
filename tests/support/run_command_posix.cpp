#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <sstream>
#include <system_error>

#include "base/text.h"
#include "platform/temporary_folder.h"
#include "tests/support/run_command.h"

extern char** environ;

namespace velinor {
namespace {

namespace fs = std::filesystem;

void throwOnError(int error, const char* operation) {
    if (error != 0) throw std::system_error(error, std::generic_category(), operation);
}

// Where a child's three streams go.
class FileActions {
  public:
    FileActions() { throwOnError(posix_spawn_file_actions_init(&actions_), "posix_spawn_file_actions_init"); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void redirect(int stream, const fs::path& file, int flags) {
        throwOnError(posix_spawn_file_actions_addopen(&actions_, stream, file.c_str(), flags, 0600),
                     "addopen");
    }
    void enter(const fs::path& folder) {
        throwOnError(posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()), "addchdir");
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

// Lowers a limit of this process, which a child inherits, for as long as it lives.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(std::optional<std::uint64_t> bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        if (!bytes) return;
        rlimit limit = before_;
        limit.rlim_cur = *bytes;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throwOnError(errno, "setrlimit");
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before_{};
};

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return std::move(text).str();
}

int waitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) == -1) {
        if (errno != EINTR) throwOnError(errno, "waitpid");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

pid_t start(const fs::path& program, const std::vector<std::string>& arguments, const FileActions& actions) {
    std::vector<std::string> texts{utf8Path(program)};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    throwOnError(posix_spawn(&child, program.c_str(), actions.get(), nullptr, pointers.data(), environ),
                 program.c_str());
    return child;
}

}  // namespace

CommandResult runProgram(const fs::path& program, const std::vector<std::string>& arguments,
                         const CommandInput& input) {
    const TemporaryFolder streams;
    const fs::path in = streams.path() / "in";
    const fs::path out = input.outFile.value_or(streams.path() / "out");
    const fs::path err = streams.path() / "err";
    std::ofstream(in, std::ios::binary) << input.standardInput;

    FileActions actions;
    actions.redirect(STDIN_FILENO, in, O_RDONLY);
    actions.redirect(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
    actions.redirect(STDERR_FILENO, err, O_WRONLY | O_CREAT | O_TRUNC);
    if (!input.folder.empty()) actions.enter(input.folder);

    pid_t child = 0;
    {
        const FileSizeLimit limit(input.largestFile);
        child = start(program, arguments, actions);
    }
    CommandResult result;
    result.status = waitFor(child);
    if (!input.outFile) result.out = contentOf(out);
    result.err = contentOf(err);
    return result;
}

}  // namespace velinor
