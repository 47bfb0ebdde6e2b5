// Writes JSON for people to read and compare: two spaces a level, a line for each member, lists of numbers on
// one line, each number as the shortest text that reads back as the same 32-bit float.
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "hosts/snapshot/document_value.h"
#include "hosts/snapshot/document_writer.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

// Enough for the shortest form of any double and for any 64-bit integer.
using NumberBuffer = std::array<char, 32>;

template <class Number>
std::string_view shortest(Number value, NumberBuffer& buffer) {
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

// The text of a float that is a number. JSON has no infinities, but numbers that no 32-bit float holds: they
// are read as infinite. Readers go through double precision, which for a few numbers (7.038531e-26) rounds
// the shortest text of the float to its neighbour; those are written as doubles. A minus zero that looked
// like an integer would lose its sign.
std::string_view realText(float value, NumberBuffer& buffer) {
    if (value == 0) return std::signbit(value) ? "-0.0" : "0";
    if (std::isinf(value)) return value > 0 ? "1e39" : "-1e39";
    const std::string_view text = shortest(value, buffer);
    double read = 0;
    std::from_chars(text.data(), text.data() + text.size(), read);
    return static_cast<float>(read) == value ? text : shortest(double{value}, buffer);
}

class JsonWriter final : public DocumentWriter {
  public:
    void beginObject() override { open('{'); }
    void endObject() override { close('}'); }
    void beginList(std::size_t /*count*/) override { open('['); }
    void endList() override { close(']'); }

    void name(std::string_view name) override {
        startItem();
        levels_.back().name = name;
        text_ += nlohmann::json(name).dump();
        text_ += ": ";
        isAfterName_ = true;
    }

    void null() override { plain("null"); }
    void boolean(bool value) override { plain(value ? "true" : "false"); }
    void text(std::string_view utf8) override { plain(nlohmann::json(utf8).dump()); }

    void integer(std::int64_t value) override {
        NumberBuffer buffer;  // filled below
        plain(shortest(value, buffer));
    }

    void real(float value) override {
        startItem();
        appendReal(value, std::nullopt);
    }

    void reals(std::span<const float> values) override {
        oneLine(values, [this](float value, std::size_t index) { appendReal(value, index); });
    }
    void integers(std::span<const std::uint32_t> values) override { integerLine(values); }
    void integers(std::span<const int> values) override { integerLine(values); }
    void flat(std::span<const float> values) override { reals(values); }
    void flat(std::span<const std::uint32_t> values) override { integers(values); }

    std::string take() override {
        text_ += '\n';
        return std::move(text_);
    }

  private:
    struct Level {
        bool isList = false;
        std::size_t count = 0;  // items begun
        std::string name = {};  // of the latest member
    };

    // Goes to where the next item of a list or member of an object stands.
    void startItem() {
        if (isAfterName_) {
            isAfterName_ = false;
            return;
        }
        if (levels_.empty()) return;
        if (levels_.back().count++ > 0) text_ += ',';
        newLine();
    }

    void newLine() {
        text_ += '\n';
        text_.append(2 * levels_.size(), ' ');
    }

    void open(char bracket) {
        startItem();
        text_ += bracket;
        levels_.push_back({.isList = bracket == '['});
    }

    void close(char bracket) {
        const bool isEmpty = levels_.back().count == 0;
        levels_.pop_back();
        if (!isEmpty) newLine();
        text_ += bracket;
    }

    void plain(std::string_view text) {
        startItem();
        text_ += text;
    }

    template <class Number, class Append>
    void oneLine(std::span<const Number> values, Append append) {
        startItem();
        text_ += '[';
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i > 0) text_ += ", ";
            append(values[i], i);
        }
        text_ += ']';
    }

    template <class Integer>
    void integerLine(std::span<const Integer> values) {
        NumberBuffer buffer;  // filled below
        oneLine(values, [&](Integer value, std::size_t) { text_ += shortest(value, buffer); });
    }

    void appendReal(float value, std::optional<std::size_t> index) {
        if (std::isnan(value)) failNotANumber(value, index);
        NumberBuffer buffer;  // filled below
        text_ += realText(value, buffer);
    }

    [[noreturn]] void failNotANumber(float value, std::optional<std::size_t> index) const {
        std::string pointer;
        for (const Level& level : levels_) {
            pointer += level.isList ? '/' + std::to_string(level.count - 1) : pointerStep(level.name);
        }
        if (index) pointer += '/' + std::to_string(*index);
        NumberBuffer buffer;  // filled below
        throw SceneError(
            placedMessage("scene", pointer,
                          std::string(shortest(value, buffer)) +
                              " cannot be written in JSON; save the scene as CBOR (.scene.cbor)"));
    }

    std::string text_;
    std::vector<Level> levels_;
    bool isAfterName_ = false;
};

}  // namespace

std::unique_ptr<DocumentWriter> makeJsonWriter() {
    return std::make_unique<JsonWriter>();
}

}  // namespace velinor
