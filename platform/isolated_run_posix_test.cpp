// What only systems with signals and copies of processes have; the rest is in isolated_run_test.cpp.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <limits>
#include <thread>

#include "platform/forked_run.h"

namespace velinor {
namespace {

using RunEnd = IsolatedRun::End;

IsolatedRun run(const std::function<void(const SendMessage&)>& work) {
    return runForked(work, [](std::string_view) {}, {});
}

TEST(RunForked, TellsTheSignalThatEndedTheWork) {
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE}) {
        const IsolatedRun result = run([signal](const SendMessage&) {
            std::signal(signal, SIG_DFL);
            std::raise(signal);
        });
        EXPECT_EQ(result.end, RunEnd::crashed);
        EXPECT_EQ(result.cause, "signal " + std::to_string(signal));
    }
}

// Writes a size that no message can have into whatever pipe there is, and goes on.
TEST(RunForked, EndsAProcessThatHasGoneMad) {
    const IsolatedRun result = run([](const SendMessage&) {
        const std::uint64_t size = std::numeric_limits<std::uint64_t>::max();
        for (int descriptor = 3; descriptor < 64; ++descriptor) {
            struct stat status {};
            if (::fstat(descriptor, &status) != 0 || !S_ISFIFO(status.st_mode)) continue;
            if (::write(descriptor, &size, sizeof size) < 0) continue;
        }
        std::this_thread::sleep_for(std::chrono::minutes(1));
    });
    EXPECT_EQ(result.end, RunEnd::crashed);
    EXPECT_EQ(result.cause, kImpossibleMessage);
}

TEST(RunForked, GivesTheWorkACopyOfWhatItsCallerHas) {
    int value = 1;
    std::string heard;
    const IsolatedRun result = runForked(
        [&](const SendMessage& send) {
            value += 1;
            send(std::to_string(value));
        },
        [&](std::string_view message) { heard = message; }, {});
    EXPECT_EQ(result.end, RunEnd::finished);
    EXPECT_EQ(heard, "2");
    EXPECT_EQ(value, 1);
}

}  // namespace
}  // namespace velinor
