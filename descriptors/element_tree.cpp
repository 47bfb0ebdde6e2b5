#include "descriptors/element_tree.h"

namespace velinor {

// An element's own list destroys whatever is below it level by level, so the lists of the elements in it are
// empty.
ElementList::~ElementList() {
    destroyTree(items_, [](Element& element) -> StableList<Element>& { return element.children.items_; });
}

Element& ElementList::append(std::string name, Attributes attributes) {
    return items_.emplace_back(std::move(name), std::move(attributes), this);
}

void ElementList::assign(ElementList& other) {
    StableList<Element> old;
    old.swap(items_);
    destroyTree(old, [](Element& element) -> StableList<Element>& { return element.children.items_; });
    items_.swap(other.items_);
    for (Element& element : items_)
        element.parent = this;
}

ElementList::iterator ElementList::begin() const {
    return items_.begin();
}
ElementList::iterator ElementList::end() const {
    return items_.end();
}

Element& ElementTreeBuilder::addSibling(std::string name, Attributes attributes) {
    Element& element = current_->append(std::move(name), std::move(attributes));
    last_ = &element.children;
    return element;
}

Element& ElementTreeBuilder::addChild(std::string name, Attributes attributes) {
    parent_ = current_;
    current_ = last_;
    return addSibling(std::move(name), std::move(attributes));
}

void ElementTreeBuilder::ascend() {
    if (parent_ == nullptr) return;
    last_ = current_;
    current_ = parent_;
    const Element* owner = current_->owner();
    parent_ = owner == nullptr ? nullptr : owner->parent;
}

void ElementTreeBuilder::setChildren(ElementList& list) {
    last_->assign(list);
}

void ElementTreeBuilder::setChildren(std::unique_ptr<const BulkChildren> children) {
    last_->owner()->bulkChildren = std::move(children);
}

}  // namespace velinor
