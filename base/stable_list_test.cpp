#include "base/stable_list.h"

#include <gtest/gtest.h>

#include <vector>

namespace velinor {
namespace {

struct Item {
    int value = 0;
    int* destroyed = nullptr;
    StableList<Item> children;

    Item(int v, int* counter) : value(v), destroyed(counter) {}
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;
    ~Item() {
        ++*destroyed;
        destroyTree(children, [](Item& item) -> StableList<Item>& { return item.children; });
    }
};

TEST(StableList, KeepsAddressesWhileItGrows) {
    int destroyed = 0;
    StableList<Item> items;
    std::vector<const Item*> addresses;
    for (int i = 0; i < 1000; ++i)
        addresses.push_back(&items.emplace_back(i, &destroyed));
    int expected = 0;
    for (const Item& item : items) {
        EXPECT_EQ(&item, addresses[static_cast<std::size_t>(expected)]);
        EXPECT_EQ(item.value, expected++);
    }
}

TEST(DestroyTree, DestroysAChainOfAMillionItemsOnce) {
    int destroyed = 0;
    {
        Item root(0, &destroyed);
        Item* last = &root;
        for (int i = 1; i < 1000000; ++i)
            last = &last->children.emplace_back(i, &destroyed);
    }
    EXPECT_EQ(destroyed, 1000000);
}

}  // namespace
}  // namespace velinor
