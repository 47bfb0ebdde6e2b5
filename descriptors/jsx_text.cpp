#include "descriptors/jsx_text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16U;

// Collects text and hands it on in chunks.
class ChunkedText {
  public:
    explicit ChunkedText(TextSink& sink) : sink_(sink) { buffer_.reserve(2 * kChunk); }
    ChunkedText(const ChunkedText&) = delete;
    ChunkedText& operator=(const ChunkedText&) = delete;
    ~ChunkedText() = default;

    void add(std::string_view text) {
        buffer_.append(text);
        if (buffer_.size() >= kChunk) flush();
    }

    void addTabs(std::size_t count) {
        for (std::size_t left = count; left > 0;) {
            const std::size_t piece = std::min(left, kChunk);
            buffer_.append(piece, '\t');
            left -= piece;
            if (buffer_.size() >= kChunk) flush();
        }
    }

    void flush() {
        sink_.write(buffer_);
        buffer_.clear();
    }

  private:
    TextSink& sink_;
    std::string buffer_;
};

void openTag(const Element& element, std::size_t depth, ChunkedText& text) {
    text.addTabs(depth);
    text.add("<");
    text.add(element.name);
    for (const auto& [key, value] : element.attributes) {
        text.add("\n");
        text.addTabs(depth + 1);
        const bool isSpread = key == "...";
        text.add(isSpread ? "{...{ " : std::string_view(key));
        text.add(value);
        if (isSpread) text.add(" }}");
    }
    text.add(">\n");
}

void closeTag(const Element& element, std::size_t depth, ChunkedText& text) {
    text.addTabs(depth);
    text.add("</");
    text.add(element.name);
    text.add(">\n");
}

}  // namespace

void renderJsx(const ElementList& elements, int depth, TextSink& sink) {
    struct Level {
        ElementList::iterator next;
        ElementList::iterator end;
        const Element* owner;
    };
    ChunkedText text(sink);
    const auto baseDepth = static_cast<std::size_t>(depth);
    std::vector<Level> levels{{elements.begin(), elements.end(), nullptr}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next != level.end) {
            const Element& element = *level.next++;
            openTag(element, baseDepth + levels.size() - 1, text);
            levels.push_back({element.children.begin(), element.children.end(), &element});
            continue;
        }
        const Element* owner = level.owner;
        levels.pop_back();
        if (owner != nullptr) closeTag(*owner, baseDepth + levels.size() - 1, text);
    }
    text.flush();
}

}  // namespace velinor
