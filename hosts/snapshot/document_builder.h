// Splits a document, which a decoder tells part by part, into values small enough to be held.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "hosts/snapshot/document_value.h"

namespace velinor {

// Takes the members of a document's top-level object, one value after the other.
class DocumentConsumer {
  public:
    virtual ~DocumentConsumer() = default;

    // The member `name` begins; `tape` tells its place. Answers whether a list comes element by element.
    virtual bool beginMember(std::string_view name, const DocumentTape& tape) = 0;

    // The value of the member, or, of a list that comes so, the next element. Valid during the call.
    virtual void takeValue(const Value& value) = 0;
    virtual void takeElement(const Value& value) = 0;
};

// What the decoders call. Members named "extras" are passed over, however deep: only their name and a null
// are kept. The decoder guarantees that the calls nest as a document does; everything else is the consumer's
// to refuse.
class DocumentBuilder {
  public:
    DocumentBuilder(std::string_view file, DocumentConsumer& consumer) : tape_(file), consumer_(consumer) {}

    void null();
    void boolean(bool value);
    void number(double value);
    void text(std::string_view text);  // well-formed UTF-8
    void typedArray(TypedArrayKind kind, std::string_view bytes);
    void beginList() { begin(ValueKind::list); }
    void beginObject() { begin(ValueKind::object); }
    void name(std::string_view name);  // well-formed UTF-8
    void end();                        // of the innermost list or object

    // Whether what comes now is passed over.
    bool isSkipping() const { return level_ == Level::skipped; }
    bool isDone() const { return level_ == Level::done; }

    std::string_view keep(std::string bytes) { return tape_.keep(std::move(bytes)); }

    // The place where the next part goes, as a JSON pointer.
    std::string pointer() const;

    // Throws the SceneError that says `problem` of that place.
    [[noreturn]] void fail(std::string_view problem) const;

  private:
    enum class Level { start, members, memberValue, elements, value, skipped, done };

    void begin(ValueKind container);
    bool takesValue();
    void finishPart();

    DocumentTape tape_;
    DocumentConsumer& consumer_;
    Level level_ = Level::start;
    Level outside_ = Level::members;  // the level to return to behind the value
    Level resumed_ = Level::members;  // the level to return to behind what is passed over
    std::string memberPointer_;
    bool isSplit_ = false;   // a list as value of the member comes element by element
    std::size_t index_ = 0;  // of the next element
    std::size_t skippedDepth_ = 0;
};

}  // namespace velinor
