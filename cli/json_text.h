// JSON for standard output, written piece by piece, so that a scene of a million nodes needs no document in
// memory.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "base/text_sink.h"

namespace velinor {

// One line of JSON. Bytes that are no UTF-8 (narrowed names) become U+FFFD.
inline std::string jsonLine(const nlohmann::ordered_json& value) {
    return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

// Writes the members of one object, one after the other: plain values, and lists with an item a line.
class JsonObjectWriter {
  public:
    explicit JsonObjectWriter(TextSink& text) : text_(text) { text_.write("{"); }

    void member(const std::string& key, const nlohmann::ordered_json& value) {
        beginMember(key);
        text_.write(jsonLine(value));
    }

    // A list whose items `writeItems` gives: it is called with a function that takes one item.
    template <typename WriteItems>
    void list(const std::string& key, const WriteItems& writeItems) {
        beginMember(key);
        text_.write("[");
        bool isFirst = true;
        writeItems([&](const nlohmann::ordered_json& item) {
            text_.write(isFirst ? "\n    " : ",\n    ");
            text_.write(jsonLine(item));
            isFirst = false;
        });
        text_.write(isFirst ? "]" : "\n  ]");
    }

    void finish() { text_.write("\n}\n"); }

  private:
    void beginMember(const std::string& key) {
        text_.write(isFirst_ ? "\n  " : ",\n  ");
        text_.write(jsonLine(key) + ": ");
        isFirst_ = false;
    }

    TextSink& text_;
    bool isFirst_ = true;
};

}  // namespace velinor
