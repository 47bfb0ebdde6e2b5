#include "hosts/ase/ase_hierarchy.h"

#include <gmock/gmock.h>

#include <string>

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Link = std::optional<std::uint32_t>;

TEST(AseHierarchy, OfNodesOfOneNameTheLastBeforeIsTheParent) {
    AseHierarchy hierarchy;
    hierarchy.add("A", std::nullopt);
    hierarchy.add("B", "A");
    hierarchy.add("A", "A");
    hierarchy.add("B", "A");
    std::vector<std::uint32_t> lost;
    EXPECT_THAT(hierarchy.parents(lost), ElementsAre(Link(), Link(0), Link(0), Link(2)));
    EXPECT_THAT(lost, IsEmpty());
}

TEST(AseHierarchy, AParentMayComeLater) {
    AseHierarchy hierarchy;
    hierarchy.add("B", "A");
    hierarchy.add("A", std::nullopt);
    hierarchy.add("A", std::nullopt);
    std::vector<std::uint32_t> lost;
    EXPECT_THAT(hierarchy.parents(lost), ElementsAre(Link(1), Link(), Link()));
    EXPECT_THAT(lost, IsEmpty());
}

TEST(AseHierarchy, WhatIsNotThereAndWhatWouldCloseACircleIsLost) {
    AseHierarchy hierarchy;
    hierarchy.add("Self", "Self");
    hierarchy.add("A", "C");
    hierarchy.add("B", "A");
    hierarchy.add("C", "B");
    hierarchy.add("D", "Nobody");
    std::vector<std::uint32_t> lost;
    EXPECT_THAT(hierarchy.parents(lost), ElementsAre(Link(), Link(), Link(1), Link(2), Link()));
    EXPECT_THAT(lost, ElementsAre(0, 1, 4));
}

// Every node's parent is the one after it: 300,000 links upwards must not be walked for each.
TEST(AseHierarchy, LongChainsInTheWrongOrderTakeNoLongTime) {
    constexpr int kNodes = 300000;
    std::vector<std::string> names;
    for (int i = 0; i <= kNodes; ++i)
        names.push_back(std::to_string(i));
    AseHierarchy hierarchy;
    for (int i = 0; i < kNodes; ++i)
        hierarchy.add(names[static_cast<std::size_t>(i)], names[static_cast<std::size_t>(i) + 1]);
    std::vector<std::uint32_t> lost;
    const auto parents = hierarchy.parents(lost);
    EXPECT_EQ(parents.front(), Link(1));
    EXPECT_THAT(lost, ElementsAre(kNodes - 1));
}

}  // namespace
}  // namespace velinor
