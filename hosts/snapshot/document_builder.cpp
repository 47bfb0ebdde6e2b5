#include "hosts/snapshot/document_builder.h"

#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_names.h"

namespace velinor {

// Decides where a part that begins now belongs. False where it is passed over.
bool DocumentBuilder::takesValue() {
    if (level_ == Level::skipped) return false;
    if (level_ == Level::start) fail("this is not a scene snapshot: an object is expected");
    if (level_ == Level::elements) {
        tape_.setPrefix(memberPointer_ + '/' + std::to_string(index_));
        outside_ = Level::elements;
        level_ = Level::value;
    } else if (level_ == Level::memberValue) {
        outside_ = Level::members;
        level_ = Level::value;
    }
    return true;
}

// Hands a value on once it is complete.
void DocumentBuilder::finishPart() {
    if (level_ == Level::skipped) {
        if (skippedDepth_ > 0) return;
        level_ = resumed_;
        if (level_ == Level::members) tape_.setPrefix({});
        return;
    }
    if (!tape_.isComplete()) return;
    level_ = outside_;
    if (level_ == Level::elements) {
        consumer_.takeElement(tape_.root());
        ++index_;
    } else {
        consumer_.takeValue(tape_.root());
    }
    tape_.clear();
    tape_.setPrefix(level_ == Level::elements ? memberPointer_ : std::string());
}

void DocumentBuilder::null() {
    if (takesValue()) tape_.addNull();
    finishPart();
}

void DocumentBuilder::boolean(bool value) {
    if (takesValue()) tape_.addBoolean(value);
    finishPart();
}

void DocumentBuilder::number(double value) {
    if (takesValue()) tape_.addNumber(value);
    finishPart();
}

void DocumentBuilder::text(std::string_view text) {
    if (takesValue()) tape_.addText(text);
    finishPart();
}

void DocumentBuilder::typedArray(TypedArrayKind kind, std::string_view bytes) {
    if (takesValue()) tape_.addTypedArray(kind, bytes);
    finishPart();
}

void DocumentBuilder::begin(ValueKind container) {
    if (level_ == Level::start && container == ValueKind::object) {
        level_ = Level::members;
    } else if (level_ == Level::memberValue && isSplit_ && container == ValueKind::list) {
        level_ = Level::elements;
        index_ = 0;
    } else if (takesValue()) {
        tape_.begin(container);
    } else {
        ++skippedDepth_;
    }
}

void DocumentBuilder::end() {
    if (level_ == Level::members) {
        level_ = Level::done;
    } else if (level_ == Level::elements) {
        level_ = Level::members;
        tape_.setPrefix({});
    } else if (level_ == Level::skipped) {
        --skippedDepth_;
        finishPart();
    } else {
        tape_.end();
        finishPart();
    }
}

void DocumentBuilder::name(std::string_view name) {
    if (level_ == Level::skipped) return;
    if (level_ == Level::members) {
        memberPointer_ = pointerStep(name);
        tape_.setPrefix(memberPointer_);
        isSplit_ = consumer_.beginMember(name, tape_);
        level_ = Level::memberValue;
        if (name != kExtrasName) return;
        resumed_ = Level::members;
    } else {
        tape_.addName(name);
        if (name != kExtrasName) return;
        tape_.addNull();
        resumed_ = level_;
    }
    level_ = Level::skipped;
}

std::string DocumentBuilder::pointer() const {
    std::string pointer = tape_.nextPointer();
    if (level_ == Level::elements) pointer += '/' + std::to_string(index_);
    if (level_ == Level::skipped && resumed_ == Level::value) pointer += pointerStep(kExtrasName);
    return pointer;
}

void DocumentBuilder::fail(std::string_view problem) const {
    throw SceneError(placedMessage(tape_.file(), pointer(), problem));
}

}  // namespace velinor
