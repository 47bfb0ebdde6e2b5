#include "platform/isolated_run.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <thread>
#include <vector>

namespace velinor {
namespace {

using End = IsolatedRun::End;

IsolatedRun run(const std::function<void(const SendMessage&)>& work, const IsolationLimits& limits = {}) {
    return runIsolated(
        work, [](std::string_view) {}, limits);
}

TEST(RunIsolated, HandsMessagesOverInOrder) {
    std::vector<std::string> messages;
    const std::string large(3000000, 'x');
    const IsolatedRun result = runIsolated(
        [&](const SendMessage& send) {
            send("first");
            send("");
            send(large);
            send(std::string_view("a\0b", 3));
        },
        [&](std::string_view message) { messages.emplace_back(message); }, {});
    EXPECT_EQ(result.end, End::finished);
    EXPECT_EQ(messages, (std::vector<std::string>{"first", "", large, std::string("a\0b", 3)}));
}

TEST(RunIsolated, SharesNothingBack) {
    int value = 1;
    EXPECT_EQ(run([&](const SendMessage&) { value = 2; }).end, End::finished);
    EXPECT_EQ(value, 1);
}

TEST(RunIsolated, SurvivesASignal) {
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE}) {
        const IsolatedRun result = run([signal](const SendMessage&) {
            std::signal(signal, SIG_DFL);
            std::raise(signal);
        });
        EXPECT_EQ(result.end, End::crashed);
        EXPECT_EQ(result.signal, signal);
    }
}

TEST(RunIsolated, EndsWhatUsesUpItsTime) {
    IsolationLimits limits;
    limits.processorSeconds = 1;
    const IsolatedRun result = run(
        [](const SendMessage&) {
            std::atomic<unsigned> turns = 0;
            for (;;)
                ++turns;
        },
        limits);
    EXPECT_EQ(result.end, End::timeLimit);
}

#ifndef __SANITIZE_ADDRESS__  // no limit of address space there
TEST(RunIsolated, EndsWhatAsksForTooMuchMemory) {
    IsolationLimits limits;
    limits.memoryBytes = std::uint64_t{1} << 30U;
    const IsolatedRun result = run(
        [](const SendMessage& send) {
            const std::vector<char> large(std::size_t{2} << 30U);
            send(std::to_string(large.size()));
        },
        limits);
    EXPECT_EQ(result.end, End::memoryLimit);
}
#endif

TEST(RunIsolated, CountsAnExceptionThatLeavesTheWorkAsACrash) {
    const IsolatedRun result = run([](const SendMessage&) { throw std::runtime_error("left"); });
    EXPECT_EQ(result.end, End::crashed);
    EXPECT_EQ(result.signal, 0);
}

TEST(RunIsolated, DropsWhatTheWorkPrints) {
    testing::internal::CaptureStderr();
    run([](const SendMessage&) {
        std::fputs("noise\n", stderr);
        std::fflush(stderr);
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RunIsolated, EndsTheOtherProcessWhereTheReceiverThrows) {
    EXPECT_THROW(runIsolated(
                     [](const SendMessage& send) {
                         for (;;)
                             send("again");
                     },
                     [](std::string_view) { throw std::runtime_error("enough"); }, {}),
                 std::runtime_error);
}

TEST(RunIsolated, WorkThatComesFurtherHasItsTimeCountedAnew) {
    const auto burn = [](double seconds) {
        const std::clock_t end = std::clock() + static_cast<std::clock_t>(seconds * CLOCKS_PER_SEC);
        while (std::clock() < end) {
        }
    };
    const IsolationLimits limits{.processorSeconds = 1};
    const IsolatedRun renewed = run(
        [&](const SendMessage&) {
            for (int step = 0; step < 4; ++step) {
                burn(0.6);
                renewProcessorTime(limits);
            }
        },
        limits);
    EXPECT_EQ(renewed.end, End::finished);
    const IsolatedRun stuck = run(
        [&](const SendMessage&) {
            renewProcessorTime(limits);
            burn(60);
        },
        limits);
    EXPECT_EQ(stuck.end, End::timeLimit);
}

TEST(RunIsolated, AsksTheCallerWhileTheWorkIsSilent) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(runIsolated([](const SendMessage&) { std::this_thread::sleep_for(std::chrono::minutes(1)); },
                             [](std::string_view) {}, {}, [] { throw std::runtime_error("stop"); }),
                 std::runtime_error);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

}  // namespace
}  // namespace velinor
