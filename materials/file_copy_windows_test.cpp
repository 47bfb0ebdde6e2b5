// What only Windows has: files that are opened for one alone; the rest is in file_copy_test.cpp.
#include "materials/file_copy_test_support.h"
#include "platform/child_process_windows.h"

namespace velinor {
namespace {

using Outcome = FileCopy::Outcome;

TEST_F(FileCopyTest, TellsOfSourcesThatCannotBeRead) {
    writeFile(source_, "secret");
    writeFile(target_, "before");
    const Handle held(CreateFileW(source_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held.isOpen());
    const FileCopy result = copy(source_, target_);
    EXPECT_EQ(result.outcome, Outcome::unreadable);
    EXPECT_NE(result.reason, "");
    EXPECT_EQ(readFile(target_), "before");
    EXPECT_EQ(names(), (std::vector<std::string>{"source", "target"}));
}

}  // namespace
}  // namespace velinor
