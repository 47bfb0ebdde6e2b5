#include "tests/support/tree_compare.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

TEST(FirstDifference, IsNothingForEqualTrees) {
    EXPECT_EQ(firstDifference({{"a", "1\n2\n"}}, {{"a", "1\n2\n"}}), std::nullopt);
}

TEST(FirstDifference, NamesFileLineAndBothTexts) {
    EXPECT_EQ(firstDifference({{"a", "1\n2\n3\n"}}, {{"a", "1\ntwo\n3\n"}}),
              "a:2:\n  expected: 2\n  actual:   two");
    EXPECT_EQ(firstDifference({{"a", "1\n2\n"}}, {{"a", "1\n2"}}),
              "a:2:\n  expected: 2\n  actual:   2 (no line end)");
    EXPECT_EQ(firstDifference({{"a", "1\n"}}, {{"a", "1\n2\n"}}),
              "a:2:\n  expected: (end of file)\n  actual:   2");
}

TEST(FirstDifference, NamesFilesOfOneSideOnly) {
    EXPECT_EQ(firstDifference({{"a", ""}}, {}), "a: is missing");
    EXPECT_EQ(firstDifference({}, {{"b", ""}}), "b: is there and was not expected");
}

}  // namespace
}  // namespace velinor
