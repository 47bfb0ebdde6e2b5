// The tree becomes a pugixml document, which knows the syntax. In it an element stands for each set of bulk
// children; the document's text is small without them, so it is made first and searched for these places.
#include "geometry/xml_text.h"

#include <pugixml.hpp>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {
namespace {

constexpr const char* kStandIn = "bulk";
constexpr std::string_view kStandInTag = "<bulk />";  // no text of the document holds an unescaped "<"

// Bulk children and the depth of their lines, in the order of the text.
struct Bulk {
    const BulkChildren* children;
    std::size_t depth;
};

// An element whose children are to be appended to `node`.
struct Pending {
    const ElementList* children;
    const BulkChildren* bulkChildren;
    pugi::xml_node node;
    std::size_t depth;  // of the children
};

pugi::xml_node append(pugi::xml_node parent, const Element& element) {
    pugi::xml_node node = parent.append_child(element.name.c_str());
    for (const auto& [key, value] : element.attributes)
        node.append_attribute(key.c_str()).set_value(value.c_str());
    return node;
}

// Fills `document` with the tree, depth first, which is the order of the text. Returns what stand-ins stand
// for.
std::vector<Bulk> fill(pugi::xml_document& document, const ElementList& elements) {
    std::vector<Bulk> bulks;
    std::vector<Pending> pending{{&elements, nullptr, document.root(), 0}};
    while (!pending.empty()) {
        Pending parent = pending.back();
        pending.pop_back();
        if (parent.bulkChildren != nullptr && !parent.bulkChildren->isEmpty()) {
            parent.node.append_child(kStandIn);
            bulks.push_back({parent.bulkChildren, parent.depth});
        }
        const std::size_t firstChild = pending.size();
        for (const Element& element : *parent.children) {
            pending.push_back({&element.children, element.bulkChildren.get(), append(parent.node, element),
                               parent.depth + 1});
        }
        std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(firstChild), pending.end());
    }
    return bulks;
}

class StringWriter final : public pugi::xml_writer {
  public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

}  // namespace

void toXmlText(const ElementList& elements, TextSink& text) {
    pugi::xml_document document;
    const std::vector<Bulk> bulks = fill(document, elements);
    StringWriter frame;
    document.save(frame, "\t", pugi::format_indent, pugi::encoding_auto);

    std::string_view rest = frame.text;
    for (const Bulk& bulk : bulks) {
        const std::size_t place = rest.find(kStandInTag);
        text.write(rest.substr(0, place - bulk.depth));  // the tabs before it belong to its line
        bulk.children->writeXml(text, bulk.depth);
        rest.remove_prefix(place + kStandInTag.size() + 1);  // with its line feed
    }
    text.write(rest);
}

}  // namespace velinor
