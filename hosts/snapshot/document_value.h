// One value of a scene document (a node, a mesh, a list of references), whatever its encoding, recorded flat.
//
// A tape holds the value as tokens in document order, containers with the place of their end, so that neither
// building nor reading nor clearing it recurses, and the memory is used again for the next value:
//
//     {"name": "Box", "children": [4, 5, 6]}    object(end 5)  name "name"  text "Box"  name "children"
//     list(end 6)
//                                               numbers(4, 5, 6)
//
// Numbers that follow each other in a list are one token over doubles; every number of the format fits one
// exactly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

enum class ValueKind : std::uint8_t { null, boolean, number, text, typedArray, list, object, name };

// What a typed array of RFC 8746 holds, four bytes each, little-endian.
enum class TypedArrayKind : std::uint8_t { float32, uint32, sint32 };

class DocumentTape;

// A view of one value on a tape; valid until the tape is cleared.
class Value {
  public:
    ValueKind kind() const;

    // Of a value of that kind only.
    bool boolean() const;
    double number() const;
    std::string_view text() const;
    TypedArrayKind typedArrayKind() const;
    std::string_view typedArrayBytes() const;

    // Of a list: its elements, or all of them as numbers. `numbers` is empty-handed where one is no number.
    std::size_t count() const;
    template <class Visit>
    void forEachElement(Visit visit) const;
    std::optional<std::span<const double>> numbers() const;

    // The element of a list of numbers or of a typed array; only to tell its place.
    Value numberAt(std::size_t index) const;

    // Of an object: calls visit(name, value) for each member in document order.
    template <class Visit>
    void forEachMember(Visit visit) const;

    // Its place in the document, as a JSON pointer. Costs time linear in the tape: for messages.
    std::string pointer() const;

    // Throws the SceneError that says `problem` of this place.
    [[noreturn]] void fail(std::string_view problem) const;

  private:
    friend class DocumentTape;
    Value(const DocumentTape& tape, std::size_t token, std::size_t element)
        : tape_(&tape), token_(token), element_(element) {}

    Value next() const;

    const DocumentTape* tape_;
    std::size_t token_;
    std::size_t element_;  // within a number token or a typed array
};

class DocumentTape {
  public:
    // `file` names the document in messages and outlives the tape.
    explicit DocumentTape(std::string_view file) : file_(file) {}

    std::string_view file() const { return file_; }

    // Forgets the value. The next one has its place below `prefix`, a JSON pointer.
    void clear();
    void setPrefix(std::string prefix) { prefix_ = std::move(prefix); }

    // The parts of a value, in document order. Text is copied; the bytes of a typed array outlive the tape.
    void addNull() { add({.kind = ValueKind::null}); }
    void addBoolean(bool value) { add({.kind = ValueKind::boolean, .a = value ? 1U : 0U}); }
    void addNumber(double value);
    void addText(std::string_view text) { addCharacters(ValueKind::text, text); }
    void addTypedArray(TypedArrayKind kind, std::string_view bytes);
    void addName(std::string_view name);
    void begin(ValueKind container);
    void end();

    // Keeps bytes that came in pieces alive until clear().
    std::string_view keep(std::string bytes);

    // Whether the one value is there in full.
    bool isComplete() const { return open_.empty() && !tokens_.empty(); }
    bool isEmpty() const { return tokens_.empty(); }

    Value root() const { return {*this, 0, 0}; }

    // The place of what would be added next, shortened where it is very deep.
    std::string nextPointer() const;

  private:
    friend class Value;

    struct Token {
        ValueKind kind = ValueKind::null;
        TypedArrayKind typedArrayKind = TypedArrayKind::float32;
        std::uint64_t a =
            0;  // container: index past its last token; numbers, text: first in pool; boolean: value
        std::uint64_t b = 0;  // container: elements or members; numbers, text: how many; typed array: bytes
        const char* bytes = nullptr;
    };

    struct OpenContainer {
        std::size_t token = 0;
        std::size_t nameToken = 0;  // the latest name of an object
        bool isNameOpen = false;    // its value has not come yet
        bool isNumberOpen = false;  // the latest token is a number token of this list
    };

    void add(const Token& token);
    void addCharacters(ValueKind kind, std::string_view text);
    void noteValue();
    std::size_t endOf(std::size_t token) const;
    std::string_view characters(const Token& token) const;
    std::string pointerTo(std::size_t target, std::size_t element) const;

    std::string_view file_;
    std::string prefix_;
    std::vector<Token> tokens_;
    std::vector<double> numbers_;
    std::string characters_;
    std::list<std::string> kept_;
    std::vector<OpenContainer> open_;
};

template <class Visit>
void Value::forEachElement(Visit visit) const {
    const std::size_t end = tape_->endOf(token_);
    for (Value element(*tape_, token_ + 1, 0); element.token_ < end; element = element.next())
        visit(element);
}

template <class Visit>
void Value::forEachMember(Visit visit) const {
    const std::size_t end = tape_->endOf(token_);
    for (std::size_t name = token_ + 1; name < end; name = tape_->endOf(name + 1)) {
        visit(tape_->characters(tape_->tokens_[name]), Value(*tape_, name + 1, 0));
    }
}

// "/" and `name` with the escapes of RFC 6901, fit for one line of a message: long names are cut.
std::string pointerStep(std::string_view name);

// `file`, `pointer` where there is one, and `problem` as one line, ready to be thrown as a SceneError.
std::string placedMessage(std::string_view file, std::string_view pointer, std::string_view problem);

// `text` in quotes for a message, cut where it is long.
std::string quoted(std::string_view text);

}  // namespace velinor
