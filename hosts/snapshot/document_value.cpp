#include "hosts/snapshot/document_value.h"

#include "base/text.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

constexpr std::size_t kLongestName = 60;
constexpr std::size_t kDeepestPointer = 16;

// Cuts UTF-8 text between characters.
std::string shortened(std::string_view text) {
    if (text.size() <= kLongestName) return std::string(text);
    std::size_t end = kLongestName;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return std::string(text.substr(0, end)) + "…";
}

}  // namespace

std::string pointerStep(std::string_view name) {
    std::string step = "/";
    for (const char c : shortened(name)) {
        if (c == '~') {
            step += "~0";
        } else if (c == '/') {
            step += "~1";
        } else {
            step += c;
        }
    }
    return printable(step);
}

std::string placedMessage(std::string_view file, std::string_view pointer, std::string_view problem) {
    std::string message = printable(file) + ": ";
    if (!pointer.empty()) message.append(pointer).append(": ");
    return message.append(problem);
}

std::string quoted(std::string_view text) {
    return '"' + printable(shortened(text)) + '"';
}

void DocumentTape::clear() {
    tokens_.clear();
    numbers_.clear();
    characters_.clear();
    kept_.clear();
    open_.clear();
}

void DocumentTape::noteValue() {
    if (open_.empty()) return;
    OpenContainer& container = open_.back();
    Token& token = tokens_[container.token];
    if (token.kind == ValueKind::list) ++token.b;
    container.isNameOpen = false;
    container.isNumberOpen = false;
}

void DocumentTape::add(const Token& token) {
    noteValue();
    tokens_.push_back(token);
}

void DocumentTape::addNumber(double value) {
    const bool joins = !open_.empty() && open_.back().isNumberOpen;
    numbers_.push_back(value);
    if (joins) {
        ++tokens_.back().b;
        ++tokens_[open_.back().token].b;
        return;
    }
    add({.kind = ValueKind::number, .a = numbers_.size() - 1, .b = 1});
    if (!open_.empty()) open_.back().isNumberOpen = tokens_[open_.back().token].kind == ValueKind::list;
}

void DocumentTape::addCharacters(ValueKind kind, std::string_view text) {
    add({.kind = kind, .a = characters_.size(), .b = text.size()});
    characters_.append(text);
}

void DocumentTape::addTypedArray(TypedArrayKind kind, std::string_view bytes) {
    add({.kind = ValueKind::typedArray, .typedArrayKind = kind, .b = bytes.size(), .bytes = bytes.data()});
}

void DocumentTape::addName(std::string_view name) {
    OpenContainer& container = open_.back();
    ++tokens_[container.token].b;
    container.nameToken = tokens_.size();
    container.isNameOpen = true;
    tokens_.push_back({.kind = ValueKind::name, .a = characters_.size(), .b = name.size()});
    characters_.append(name);
}

void DocumentTape::begin(ValueKind container) {
    // The count of the list around it grows at the end, so that nextPointer() tells the place inside it.
    open_.push_back({.token = tokens_.size()});
    tokens_.push_back({.kind = container});
}

void DocumentTape::end() {
    tokens_[open_.back().token].a = tokens_.size();
    open_.pop_back();
    noteValue();
}

std::string_view DocumentTape::keep(std::string bytes) {
    return kept_.emplace_back(std::move(bytes));
}

std::size_t DocumentTape::endOf(std::size_t token) const {
    const Token& t = tokens_[token];
    return t.kind == ValueKind::list || t.kind == ValueKind::object ? t.a : token + 1;
}

std::string_view DocumentTape::characters(const Token& token) const {
    return std::string_view(characters_).substr(token.a, token.b);
}

std::string DocumentTape::nextPointer() const {
    std::string pointer = prefix_;
    std::size_t depth = 0;
    for (const OpenContainer& container : open_) {
        if (++depth > kDeepestPointer) return pointer + "/…";
        const Token& token = tokens_[container.token];
        if (token.kind == ValueKind::list) {
            pointer += '/' + std::to_string(token.b);
        } else if (container.isNameOpen) {
            pointer += pointerStep(characters(tokens_[container.nameToken]));
        }
    }
    return pointer;
}

std::string DocumentTape::pointerTo(std::size_t target, std::size_t element) const {
    std::string pointer = prefix_;
    std::size_t current = 0;
    while (current != target) {
        std::size_t inner = current + 1;
        if (tokens_[current].kind == ValueKind::object) {
            while (endOf(inner + 1) <= target)
                inner = endOf(inner + 1);
            pointer += pointerStep(characters(tokens_[inner]));
            ++inner;
        } else {
            std::size_t index = 0;
            while (endOf(inner) <= target) {
                index += tokens_[inner].kind == ValueKind::number ? tokens_[inner].b : 1;
                inner = endOf(inner);
            }
            const bool isNumber = tokens_[inner].kind == ValueKind::number;
            pointer += '/' + std::to_string(isNumber ? index + element : index);
        }
        current = inner;
    }
    return pointer;
}

ValueKind Value::kind() const {
    return tape_->tokens_[token_].kind;
}

bool Value::boolean() const {
    return tape_->tokens_[token_].a != 0;
}

double Value::number() const {
    return tape_->numbers_[tape_->tokens_[token_].a + element_];
}

std::string_view Value::text() const {
    return tape_->characters(tape_->tokens_[token_]);
}

TypedArrayKind Value::typedArrayKind() const {
    return tape_->tokens_[token_].typedArrayKind;
}

std::string_view Value::typedArrayBytes() const {
    const auto& token = tape_->tokens_[token_];
    return {token.bytes, token.b};
}

std::size_t Value::count() const {
    return tape_->tokens_[token_].b;
}

std::optional<std::span<const double>> Value::numbers() const {
    const std::size_t size = count();
    if (size == 0) return std::span<const double>();
    const auto& first = tape_->tokens_[token_ + 1];
    if (first.kind != ValueKind::number || first.b != size) return std::nullopt;
    return std::span(tape_->numbers_).subspan(first.a, size);
}

Value Value::numberAt(std::size_t index) const {
    return kind() == ValueKind::typedArray ? Value(*tape_, token_, index + 1)
                                           : Value(*tape_, token_ + 1, index);
}

Value Value::next() const {
    const auto& token = tape_->tokens_[token_];
    if (token.kind == ValueKind::number && element_ + 1 < token.b) return {*tape_, token_, element_ + 1};
    return {*tape_, tape_->endOf(token_), 0};
}

std::string Value::pointer() const {
    std::string pointer = tape_->pointerTo(token_, element_);
    if (kind() == ValueKind::typedArray && element_ > 0) pointer += '/' + std::to_string(element_ - 1);
    return pointer;
}

void Value::fail(std::string_view problem) const {
    throw SceneError(placedMessage(tape_->file(), pointer(), problem));
}

}  // namespace velinor
