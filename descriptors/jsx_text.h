// The text form of index.jsx:
//
//   <name
//   	key=value
//   	{...{ value }}>
//   	<child>
//   	</child>
//   </name>
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_sink.h"
#include "descriptors/element_tree.h"

namespace velinor {

// An attribute as it is written: the key carries its own "=", and the key "..." is a spread. Nothing is
// escaped.
struct JsxAttribute {
    std::string_view key;
    std::string_view value;
};

// Writes markup as it arises, with the cursor of ElementTreeBuilder and the text that its tree would give.
// Nothing but the names of the open elements is kept. (As a tree, a scene of 1,000,000 meshes took 1.3 GB and
// twice the time; and the indentation of a scene that is 100,000 levels deep outgrows any memory.)
class JsxWriter {
  public:
    // The outermost elements are indented by `depth` tabs. `sink` must outlive the writer.
    JsxWriter(TextSink& sink, int depth);
    JsxWriter(const JsxWriter&) = delete;
    JsxWriter& operator=(const JsxWriter&) = delete;
    JsxWriter(JsxWriter&&) = delete;
    JsxWriter& operator=(JsxWriter&&) = delete;
    ~JsxWriter() = default;

    // The operations of ElementTreeBuilder. `attributes` are in ascending byte order of their keys.
    void addSibling(std::string_view name, std::span<const JsxAttribute> attributes = {});
    void addChild(std::string_view name, std::span<const JsxAttribute> attributes = {});
    void ascend();

    // Closes all elements and hands on what is left. To be called once, at the end.
    void finish();

  private:
    void openTag(std::string_view name, std::span<const JsxAttribute> attributes);
    void closeTo(std::size_t level);
    void addTabs(std::size_t count);
    void flushIfLong();

    TextSink& sink_;
    std::size_t depth_;
    std::string buffer_;
    std::vector<std::string> open_;      // the names of the open elements, outermost first
    std::size_t current_ = 0;            // the level at which a sibling goes: so many elements are around it
    std::optional<std::size_t> parent_;  // the level to which an ascend returns
    std::size_t last_ = 0;               // the level at which a child goes
};

// Writes `elements` as markup, the outermost indented by `depth` tabs.
void renderJsx(const ElementList& elements, int depth, TextSink& sink);

}  // namespace velinor
