#include "platform/process_info.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

TEST(ExecutablePath, NamesThisTestProgram) {
    EXPECT_TRUE(executablePath().is_absolute());
    EXPECT_EQ(executablePath().stem(), "platform_tests");
    EXPECT_TRUE(std::filesystem::exists(executablePath()));
}

}  // namespace
}  // namespace velinor
