#include "descriptors/jsx_text.h"

#include <algorithm>

namespace velinor {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16U;

}  // namespace

JsxWriter::JsxWriter(TextSink& sink, int depth) : sink_(sink), depth_(static_cast<std::size_t>(depth)) {
    buffer_.reserve(2 * kChunk);
}

void JsxWriter::addSibling(std::string_view name, std::span<const JsxAttribute> attributes) {
    closeTo(current_);
    openTag(name, attributes);
    last_ = current_ + 1;
}

void JsxWriter::addChild(std::string_view name, std::span<const JsxAttribute> attributes) {
    parent_ = current_;
    current_ = last_;
    addSibling(name, attributes);
}

void JsxWriter::ascend() {
    if (!parent_) return;
    last_ = current_;
    current_ = *parent_;
    parent_ = current_ == 0 ? std::nullopt : std::optional(current_ - 1);
}

void JsxWriter::finish() {
    closeTo(0);
    sink_.write(buffer_);
    buffer_.clear();
}

void JsxWriter::openTag(std::string_view name, std::span<const JsxAttribute> attributes) {
    const std::size_t indent = depth_ + open_.size();
    addTabs(indent);
    buffer_ += '<';
    buffer_ += name;
    for (const auto& [key, value] : attributes) {
        buffer_ += '\n';
        addTabs(indent + 1);
        const bool isSpread = key == "...";
        buffer_ += isSpread ? "{...{ " : key;
        buffer_ += value;
        if (isSpread) buffer_ += " }}";
    }
    buffer_ += ">\n";
    open_.emplace_back(name);
    flushIfLong();
}

void JsxWriter::closeTo(std::size_t level) {
    while (open_.size() > level) {
        addTabs(depth_ + open_.size() - 1);
        buffer_ += "</";
        buffer_ += open_.back();
        buffer_ += ">\n";
        open_.pop_back();
        flushIfLong();
    }
}

void JsxWriter::addTabs(std::size_t count) {
    while (count > 0) {
        const std::size_t piece = std::min(count, kChunk);
        buffer_.append(piece, '\t');
        count -= piece;
        flushIfLong();
    }
}

void JsxWriter::flushIfLong() {
    if (buffer_.size() < kChunk) return;
    sink_.write(buffer_);
    buffer_.clear();
}

void renderJsx(const ElementList& elements, int depth, TextSink& sink) {
    struct Level {
        ElementList::iterator next;
        ElementList::iterator end;
        bool isFirst = true;
    };
    JsxWriter writer(sink, depth);
    std::vector<JsxAttribute> attributes;
    std::vector<Level> levels{{elements.begin(), elements.end()}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.end) {
            if (!level.isFirst) writer.ascend();
            levels.pop_back();
            continue;
        }
        const Element& element = *level.next++;
        attributes.clear();
        for (const auto& [key, value] : element.attributes)
            attributes.push_back({key, value});
        if (level.isFirst && levels.size() > 1) {
            writer.addChild(element.name, attributes);
        } else {
            writer.addSibling(element.name, attributes);
        }
        level.isFirst = false;
        if (!element.children.empty()) levels.push_back({element.children.begin(), element.children.end()});
    }
    writer.finish();
}

}  // namespace velinor
