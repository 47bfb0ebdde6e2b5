// The element tree that every markup file is built as, and the builder that fills it.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "base/stable_list.h"
#include "base/text_sink.h"

namespace velinor {

class ElementList;

// Attributes by key, in ascending byte order of the keys. Nothing is escaped.
using Attributes = std::map<std::string, std::string>;

// One element. Owned by the list that holds it, and stays where it is while the tree grows.
struct Element;

// A list of sibling elements: the children of one element, or the top level.
class ElementList {
  public:
    using iterator = StableList<Element>::const_iterator;

    ElementList() = default;
    explicit ElementList(Element* owner) : owner_(owner) {}
    ElementList(const ElementList&) = delete;
    ElementList& operator=(const ElementList&) = delete;
    ElementList(ElementList&&) = delete;
    ElementList& operator=(ElementList&&) = delete;
    ~ElementList();

    Element& append(std::string name, Attributes attributes);

    // Takes over all elements of `other`, which is left empty; the elements that were here are gone.
    void assign(ElementList& other);

    iterator begin() const;
    iterator end() const;
    bool empty() const { return items_.empty(); }
    std::size_t size() const { return items_.size(); }

    // The element whose children these are; null at the top level.
    Element* owner() const { return owner_; }

  private:
    Element* owner_ = nullptr;
    StableList<Element> items_;
};

// Children that exist as elements nowhere: millions of equal ones, which write themselves where the tree
// becomes XML text.
class BulkChildren {
  public:
    virtual ~BulkChildren() = default;

    // Whether there are no children at all.
    virtual bool isEmpty() const = 0;

    // Writes all children as lines of XML, `depth` tabs before those of the children themselves.
    virtual void writeXml(TextSink& text, std::size_t depth) const = 0;
};

struct Element {
    std::string name;
    Attributes attributes;
    ElementList* parent;  // the list that holds this element
    ElementList children{this};
    std::unique_ptr<const BulkChildren> bulkChildren;  // before `children`; null: none

    Element(std::string elementName, Attributes elementAttributes, ElementList* list)
        : name(std::move(elementName)), attributes(std::move(elementAttributes)), parent(list) {}
};

// Builds a tree front to back with a cursor. The first child of an element is added with addChild, the ones
// after it with addSibling, and one ascend closes the level. What addSibling adds after an element with
// children stands beside that element; children added then belong to the element added last.
class ElementTreeBuilder {
  public:
    // Appends an element to the current list.
    Element& addSibling(std::string name, Attributes attributes = {});

    // Appends an element to the children of the element added last, and makes them the current list. After an
    // ascend the list that was closed takes that place, so a child comes behind the children that are there.
    Element& addChild(std::string name, Attributes attributes = {});

    // Makes the list that holds the current list's owner the current one. At the top level nothing changes.
    void ascend();

    // Gives the element added last the elements of `list` as its children, and leaves `list` empty.
    void setChildren(ElementList& list);

    // Gives the element added last children that write themselves. There has to be one.
    void setChildren(std::unique_ptr<const BulkChildren> children);

    // The top-level list; lives as long as the builder.
    const ElementList& elements() const { return top_; }

  private:
    ElementList top_;
    ElementList* current_ = &top_;
    ElementList* parent_ = nullptr;  // where an ascend returns
    ElementList* last_ = &top_;      // where the next child goes
};

}  // namespace velinor
