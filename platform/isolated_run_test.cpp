#include "platform/isolated_run.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <stdexcept>
#include <thread>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

namespace velinor {
namespace {

using RunEnd = IsolatedRun::End;

IsolatedRun run(const IsolatedWork& work, const IsolationLimits& limits = {}, std::string_view input = {}) {
    return runIsolated(
        work, input, [](std::string_view) {}, limits);
}

void burn(double seconds) {
    const std::clock_t end = std::clock() + static_cast<std::clock_t>(seconds * CLOCKS_PER_SEC);
    while (std::clock() < end) {
    }
}

int sharedValue = 1;

const IsolatedWork kSendSome("send-some", [](std::string_view, const SendMessage& send) {
    send("first");
    send("");
    send(std::string(3000000, 'x'));
    send(std::string_view("a\0b", 3));
});
const IsolatedWork kEcho("echo", [](std::string_view input, const SendMessage& send) { send(input); });
const IsolatedWork kChangeValue("change-value",
                                [](std::string_view, const SendMessage&) { sharedValue = 2; });
const IsolatedWork kSpin("spin", [](std::string_view, const SendMessage&) {
    std::atomic<unsigned> turns = 0;
    for (;;)
        ++turns;
});
const IsolatedWork kTakeAtOnce("take-at-once", [](std::string_view, const SendMessage& send) {
    const std::vector<char> large(std::size_t{2} << 30U);
    send(std::to_string(large.size()));
});
const IsolatedWork kTakeInPieces("take-in-pieces", [](std::string_view, const SendMessage& send) {
    std::vector<std::vector<char>> pieces;
    for (;;) {
        pieces.emplace_back(std::size_t{1} << 20U, 'x');
        if (pieces.size() % 100 == 0) send(std::to_string(pieces.size()));
    }
});
const IsolatedWork kThrow("throw",
                          [](std::string_view, const SendMessage&) { throw std::runtime_error("left"); });
const IsolatedWork kThrowBadAlloc("throw-bad-alloc",
                                  [](std::string_view, const SendMessage&) { throw std::bad_alloc(); });
const IsolatedWork kPrint("print", [](std::string_view, const SendMessage& send) {
    for (std::FILE* stream : {stdout, stderr}) {
        std::fputs("noise\n", stream);
        std::fflush(stream);
    }
    send("message");
});
const IsolatedWork kSendForEver("send-for-ever", [](std::string_view, const SendMessage& send) {
    for (;;)
        send("again");
});
const IsolatedWork kBurnInSteps("burn-in-steps", [](std::string_view, const SendMessage&) {
    for (int step = 0; step < 4; ++step) {
        burn(0.9);
        renewProcessorTime({.processorSeconds = 2});
    }
});
const IsolatedWork kRenewAndHang("renew-and-hang", [](std::string_view, const SendMessage&) {
    renewProcessorTime({.processorSeconds = 1});
    burn(60);
});
const IsolatedWork kSleep("sleep", [](std::string_view, const SendMessage&) {
    std::this_thread::sleep_for(std::chrono::minutes(1));
});
const IsolatedWork kWriteNowhere("write-nowhere", [](std::string_view, const SendMessage&) {
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
});
const IsolatedWork kAbort("abort", [](std::string_view, const SendMessage&) { std::abort(); });

TEST(RunIsolated, HandsMessagesOverInOrder) {
    std::vector<std::string> messages;
    const IsolatedRun result =
        runIsolated(kSendSome, {}, [&](std::string_view message) { messages.emplace_back(message); }, {});
    EXPECT_EQ(result.end, RunEnd::finished);
    EXPECT_EQ(messages,
              (std::vector<std::string>{"first", "", std::string(3000000, 'x'), std::string("a\0b", 3)}));
}

TEST(RunIsolated, HandsTheInputOver) {
    for (const std::string& input :
         {std::string(), std::string("a\0b\r\n\x1A", 6), std::string(1000000, 'y')}) {
        std::string heard = "nothing";
        runIsolated(kEcho, input, [&](std::string_view message) { heard = message; }, {});
        EXPECT_EQ(heard, input);
    }
}

TEST(RunIsolated, SharesNothingBack) {
    EXPECT_EQ(run(kChangeValue).end, RunEnd::finished);
    EXPECT_EQ(sharedValue, 1);
}

TEST(RunIsolated, SurvivesAMemoryError) {
    const IsolatedRun result = run(kWriteNowhere);
    EXPECT_EQ(result.end, RunEnd::crashed);
#ifdef _WIN32
    EXPECT_EQ(result.cause, "exception 0xC0000005");
#elif !defined(__SANITIZE_ADDRESS__)  // which has a handler of its own for it
    EXPECT_EQ(result.cause, "signal 11");
#endif
}

TEST(RunIsolated, SurvivesAnAbort) {
    const IsolatedRun result = run(kAbort);
    EXPECT_EQ(result.end, RunEnd::crashed);
#ifdef _WIN32
    EXPECT_EQ(result.cause, "exit status 3");
#else
    EXPECT_EQ(result.cause, "signal 6");
#endif
}

TEST(RunIsolated, EndsWhatUsesUpItsTime) {
    EXPECT_EQ(run(kSpin, {.processorSeconds = 1}).end, RunEnd::timeLimit);
}

#ifndef __SANITIZE_ADDRESS__  // no limit of address space there
TEST(RunIsolated, EndsWhatAsksForTooMuchMemory) {
    EXPECT_EQ(run(kTakeAtOnce, {.memoryBytes = std::uint64_t{1} << 30U}).end, RunEnd::memoryLimit);
}

TEST(RunIsolated, EndsWhatTakesTooMuchMemoryBitByBit) {
    std::string taken = "0";
    const IsolatedRun result =
        runIsolated(kTakeInPieces, {}, [&](std::string_view message) { taken = message; },
                    {.memoryBytes = std::uint64_t{600} << 20U});
    EXPECT_EQ(result.end, RunEnd::memoryLimit);
    EXPECT_GE(std::stoi(taken), 300);
    EXPECT_LE(std::stoi(taken), 700);
}
#endif

TEST(RunIsolated, CountsTheLackOfMemoryAsItsLimit) {
    EXPECT_EQ(run(kThrowBadAlloc).end, RunEnd::memoryLimit);
}

TEST(RunIsolated, CountsAnExceptionThatLeavesTheWorkAsACrash) {
    const IsolatedRun result = run(kThrow);
    EXPECT_EQ(result.end, RunEnd::crashed);
    EXPECT_EQ(result.cause, "");
}

TEST(RunIsolated, DropsWhatTheWorkPrints) {
    std::vector<std::string> messages;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    runIsolated(kPrint, {}, [&](std::string_view message) { messages.emplace_back(message); }, {});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(messages, std::vector<std::string>{"message"});
}

#ifdef _WIN32
// Writes a size that no message can have into whatever pipe there is, and goes on.
const IsolatedWork kGoMad("go-mad", [](std::string_view, const SendMessage&) {
    const std::uint64_t size = std::numeric_limits<std::uint64_t>::max();
    for (std::uintptr_t number = 4; number < 4096; number += 4) {
        HANDLE handle = reinterpret_cast<HANDLE>(number);
        DWORD written = 0;
        if (GetFileType(handle) == FILE_TYPE_PIPE) WriteFile(handle, &size, sizeof size, &written, nullptr);
    }
    std::this_thread::sleep_for(std::chrono::minutes(1));
});

TEST(RunIsolated, EndsAProcessThatHasGoneMad) {
    const IsolatedRun result = run(kGoMad);
    EXPECT_EQ(result.end, RunEnd::crashed);
    EXPECT_EQ(result.cause, kImpossibleMessage);
}
#endif

TEST(RunIsolated, EndsTheOtherProcessWhereTheReceiverThrows) {
    EXPECT_THROW(
        runIsolated(kSendForEver, {}, [](std::string_view) { throw std::runtime_error("enough"); }, {}),
        std::runtime_error);
}

TEST(RunIsolated, WorkThatComesFurtherHasItsTimeCountedAnew) {
    const IsolationLimits limits{.processorSeconds = 2};
    EXPECT_EQ(run(kBurnInSteps, limits).end, RunEnd::finished);
    EXPECT_EQ(run(kRenewAndHang, limits).end, RunEnd::timeLimit);
}

TEST(RunIsolated, AsksTheCallerWhileTheWorkIsSilent) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(runIsolated(
                     kSleep, {}, [](std::string_view) {}, {}, [] { throw std::runtime_error("stop"); }),
                 std::runtime_error);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST(IsolatedWork, IsFoundByItsName) {
    EXPECT_EQ(IsolatedWork::find("echo"), &kEcho);
    EXPECT_EQ(IsolatedWork::find("abort"), &kAbort);
    EXPECT_EQ(IsolatedWork::find("ech"), nullptr);
}

}  // namespace
}  // namespace velinor
