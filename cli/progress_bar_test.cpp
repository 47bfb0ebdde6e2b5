#include "cli/progress_bar.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

TEST(ProgressBarText, ShowsPhaseAndShare) {
    EXPECT_EQ(progressBarText("Collecting nodes", 0, 0), "Collecting nodes ...");
    EXPECT_EQ(progressBarText("A", 0, 10), "A  [" + std::string(30, ' ') + "]  0 %");
    EXPECT_EQ(progressBarText("A", 5, 10), "A  [" + std::string(15, '#') + std::string(15, ' ') + "]  50 %");
    EXPECT_EQ(progressBarText("A", 20, 10), "A  [" + std::string(30, '#') + "]  100 %");
    EXPECT_EQ(progressBarText("a\nb", 0, 0), "a\\nb ...");
}

}  // namespace
}  // namespace velinor
