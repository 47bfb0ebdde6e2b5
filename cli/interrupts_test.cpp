#include "cli/interrupts.h"

#include <gtest/gtest.h>

#include <csignal>

#include "cli/progress_bar.h"

namespace velinor {
namespace {

// In a process of its own: a request to stop is remembered for good.
TEST(InterruptsDeathTest, AreThrownByProgressAtTheNextStep) {
    EXPECT_EXIT(
        {
            rememberInterrupts();
            ProgressBar progress(ProgressStyle::silent);
            progress.advance(1);
            std::raise(SIGTERM);
            try {
                progress.advance(1);
            } catch (const Interrupted&) {
                std::exit(7);
            }
            std::exit(0);
        },
        testing::ExitedWithCode(7), "");
}

TEST(InterruptsDeathTest, StayOffWhereTheParentSwitchedThemOff) {
    EXPECT_EXIT(
        {
            std::signal(SIGINT, SIG_IGN);
            rememberInterrupts();
            std::raise(SIGINT);
            throwIfInterrupted();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace velinor
