#include "cli/name_glob.h"

#include <re2/re2.h>

#include <stdexcept>

namespace velinor {
namespace {

std::string quoted(std::string_view text) {
    return RE2::QuoteMeta({text.data(), text.size()});
}

// The bytes of the character of UTF-8 that `text` begins with.
std::string_view firstCharacter(std::string_view text) {
    std::size_t size = 1;
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        ++size;
    return text.substr(0, size);
}

// The set that `text` begins with, up to its "]"; empty where it has none. A "]" at its beginning is a
// member.
std::string_view setAtBeginning(std::string_view text) {
    std::size_t first = 1;
    if (first < text.size() && (text[first] == '!' || text[first] == '^')) ++first;
    const std::size_t end = text.find(']', first + 1);
    return end == std::string_view::npos ? std::string_view() : text.substr(0, end + 1);
}

// A set as regular expressions have it. Hyphens between members are the only characters with a meaning.
std::string setExpression(std::string_view set) {
    std::string_view members = set.substr(1, set.size() - 2);
    std::string expression = "[";
    if (members.starts_with('!') || members.starts_with('^')) {
        expression += '^';
        members.remove_prefix(1);
    }
    const std::size_t last = members.size() - 1;
    for (std::size_t i = 0; i < members.size(); ++i) {
        const bool isRange = members[i] == '-' && i != 0 && i != last;
        const bool isSpecial = std::string_view("\\]^[-").find(members[i]) != std::string_view::npos;
        if (isSpecial && !isRange) expression += '\\';
        expression += members[i];
    }
    return expression + "]";
}

std::string expressionOf(std::string_view pattern) {
    std::string expression;
    while (!pattern.empty()) {
        std::string_view taken = firstCharacter(pattern);
        if (taken == "*") {
            expression += ".*";
        } else if (taken == "?") {
            expression += '.';
        } else if (const auto set = taken == "[" ? setAtBeginning(pattern) : ""; !set.empty()) {
            expression += setExpression(set);
            taken = set;
        } else if (taken == "\\" && pattern.size() > 1) {
            pattern.remove_prefix(1);
            taken = firstCharacter(pattern);
            expression += quoted(taken);
        } else {
            expression += quoted(taken);
        }
        pattern.remove_prefix(taken.size());
    }
    return expression;
}

std::string_view ofBearableLength(std::string_view pattern) {
    constexpr std::size_t kLongest = 1 << 16;
    if (pattern.size() <= kLongest) return pattern;
    throw std::invalid_argument("longer than " + std::to_string(kLongest) + " bytes");
}

RE2::Options expressionOptions() {
    RE2::Options options;
    options.set_dot_nl(true);
    options.set_log_errors(false);
    return options;
}

}  // namespace

NameGlob::NameGlob(std::string_view pattern)
    : expression_(std::make_unique<re2::RE2>(expressionOf(ofBearableLength(pattern)), expressionOptions())) {
    if (!expression_->ok()) throw std::invalid_argument(expression_->error());
}

NameGlob::NameGlob(NameGlob&&) noexcept = default;
NameGlob& NameGlob::operator=(NameGlob&&) noexcept = default;
NameGlob::~NameGlob() = default;

bool NameGlob::matches(std::string_view name) const {
    return RE2::FullMatch({name.data(), name.size()}, *expression_);
}

}  // namespace velinor
