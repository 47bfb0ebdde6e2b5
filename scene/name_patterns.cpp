#include "scene/name_patterns.h"

#include <re2/re2.h>

#include <stdexcept>
#include <string>

namespace velinor {
namespace {

re2::RE2::Options byteOptions() {
    re2::RE2::Options options;
    options.set_encoding(re2::RE2::Options::EncodingLatin1);
    options.set_log_errors(false);
    options.set_never_capture(
        true);  // nobody asks for groups, and without them a literal start is compared at once
    return options;
}

}  // namespace

NamePattern::NamePattern(std::string_view expression)
    : expression_(
          std::make_unique<re2::RE2>(re2::StringPiece(expression.data(), expression.size()), byteOptions())) {
    if (!expression_->ok())
        throw std::invalid_argument("not a regular expression: " + std::string(expression));
}

NamePattern::~NamePattern() = default;
NamePattern::NamePattern(NamePattern&&) noexcept = default;
NamePattern& NamePattern::operator=(NamePattern&&) noexcept = default;

bool NamePattern::search(std::string_view text) const {
    return re2::RE2::PartialMatch(re2::StringPiece(text.data(), text.size()), *expression_);
}

std::optional<std::string_view> NamePattern::find(std::string_view text) const {
    const re2::StringPiece subject(text.data(), text.size());
    re2::StringPiece match;
    if (!expression_->Match(subject, 0, text.size(), re2::RE2::UNANCHORED, &match, 1)) return std::nullopt;
    return std::string_view(match.data(), match.size());
}

}  // namespace velinor
