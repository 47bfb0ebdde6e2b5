// Every file of the model collection, each in a process of its own: read or refused with a message, nothing
// else.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <sstream>
#include <vector>

#include "base/text.h"
#include "hosts/assimp/assimp_test_support.h"

namespace velinor {
namespace {

enum Outcome : int { kRead = 0, kRefused = 1, kUnsound = 2, kBadMessage = 3 };

void limitThisProcess() {
#ifndef __SANITIZE_ADDRESS__
    const rlimit memory{4ULL << 30U, 4ULL << 30U};
    setrlimit(RLIMIT_AS, &memory);
#endif
    const rlimit seconds{60, 60};
    setrlimit(RLIMIT_CPU, &seconds);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
}

Outcome tryToRead(const std::filesystem::path& file) {
    try {
        return faultOf(readScene(file).scene).empty() ? kRead : kUnsound;
    } catch (const SceneError& error) {
        const std::string message = error.what();
        const bool isGood =
            message.starts_with(utf8Path(file) + ": ") && message.find('\n') == std::string::npos;
        return isGood ? kRefused : kBadMessage;
    }
}

// How a process that reads `file` ends: an Outcome, or the signal's number plus 1000. `output` takes what it
// prints.
int outcomeOf(const std::filesystem::path& file, const std::filesystem::path& output) {
    const pid_t child = fork();
    if (child == 0) {
        limitThisProcess();
        if (std::freopen(output.c_str(), "w", stdout) == nullptr || dup2(fileno(stdout), STDERR_FILENO) < 0)
            _exit(99);
        const Outcome outcome = tryToRead(file);
        std::fflush(stdout);
        _exit(outcome);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

// The library's OpenGEX reader prints a line of its own.
bool mayPrint(const std::filesystem::path& file) {
    return file.extension() == ".ogex";
}

TEST_F(ModelTest, EveryFileIsReadOrRefusedAndNothingIsPrinted) {
    const ScratchFolder folder;
    const std::filesystem::path output = folder.path() / "output";
    int read = 0;
    int refused = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(models())) {
        if (!entry.is_regular_file() || !canReadWithAssimp(entry.path())) continue;
        const int outcome = outcomeOf(entry.path(), output);
        read += outcome == kRead ? 1 : 0;
        refused += outcome == kRefused ? 1 : 0;
        EXPECT_TRUE(outcome == kRead || outcome == kRefused) << entry.path() << " ended with " << outcome;
        if (!mayPrint(entry.path())) {
            EXPECT_EQ(contentOf(output), "") << entry.path();
        }
    }
    std::printf("%d files read, %d refused\n", read, refused);
    EXPECT_GT(read, 300);
}

// Here and not among the other refusals: the library's reader of this format loses the memory of the missing
// nodes.
TEST_F(ModelTest, FilesWhoseNodeTreeHasAHoleAreRefused) {
    const ScratchFolder folder;
    for (const char* name : {"RAW/WithColor.raw", "RAW/WithTexture.raw"}) {
        EXPECT_EQ(outcomeOf(models() / name, folder.path() / "output"), kRefused) << name;
    }
}

}  // namespace
}  // namespace velinor
