// Lists for trees that can be 100,000 levels deep.
#pragma once

#include <list>

namespace velinor {

// A list whose items keep their addresses while it grows. std::list may hold an incomplete type, so an item
// can own a list of its own kind; a deque costs half a kilobyte even when it is empty, and most lists of a
// tree are empty.
template <class T>
using StableList = std::list<T>;

// Destroys a tree level by level instead of item within item, so that its depth costs no stack.
// `childrenOf(item)` gives the list that an item owns. Call it from the item's destructor on that list.
template <class T, class ChildrenOf>
void destroyTree(StableList<T>& items, ChildrenOf childrenOf) {
    while (!items.empty()) {
        items.splice(items.end(), childrenOf(items.front()));
        items.pop_front();
    }
}

}  // namespace velinor
