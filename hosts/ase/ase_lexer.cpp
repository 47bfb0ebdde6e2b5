#include "hosts/ase/ase_lexer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

// What no word without quotes goes beyond.
bool endsWord(char c) {
    return isBlank(c) || c == '{' || c == '}' || c == '"' || c == '*';
}

bool isKeywordLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

std::string_view withoutLastBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// A number that a double cannot hold either: too large or too small.
bool isTiny(std::string_view word) {
    const std::size_t exponent = word.find_first_of("eE");
    if (exponent != std::string_view::npos) return word.substr(exponent + 1).starts_with('-');
    return word.starts_with("0.") || word.starts_with("-0.") || word.starts_with('.') ||
           word.starts_with("-.");
}

// Of a decimal number in `word`, in the notation of C; nothing where it is none.
std::optional<float> decimal(std::string_view word) {
    double value = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (stop != end) return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        const float huge = isTiny(word) ? 0 : std::numeric_limits<float>::infinity();
        return word.starts_with('-') ? -huge : huge;
    }
    if (error != std::errc()) return std::nullopt;
    return static_cast<float>(value);
}

// What a C library writes for a number that is none: "1.#QNAN", "-1.#IND00", "1.#INF".
std::optional<float> markedNumber(std::string_view word) {
    const bool isNegative = word.starts_with('-');
    if (isNegative) word.remove_prefix(1);
    if (!word.starts_with("1.#")) return std::nullopt;
    word.remove_prefix(3);
    if (!word.starts_with("INF")) return std::numeric_limits<float>::quiet_NaN();
    return isNegative ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
}

}  // namespace

// As much of a word as a message shows.
std::string AseLexer::shown(std::string_view word) const {
    constexpr std::size_t kLongest = 40;
    if (word.size() <= kLongest) return printable(toUtf8(decodeAse(word, encoding_)));
    std::size_t end = kLongest;
    const auto isWithinCharacter = [&] { return (static_cast<unsigned char>(word[end]) & 0xC0U) == 0x80; };
    while (encoding_ == AseEncoding::utf8 && end > 0 && isWithinCharacter())
        --end;
    return printable(toUtf8(decodeAse(word.substr(0, end), encoding_))) + "...";
}

// Lines end with CR LF, LF or CR. Columns count characters, not bytes.
AseLexer::LineAndColumn AseLexer::lineAndColumn(std::size_t place) const {
    LineAndColumn found;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < place; ++at) {
        const bool isEnd =
            text_[at] == '\n' || (text_[at] == '\r' && (at + 1 == text_.size() || text_[at + 1] != '\n'));
        if (!isEnd) continue;
        ++found.line;
        begin = at + 1;
    }
    const auto isFirstByte = [this](char c) {
        return encoding_ == AseEncoding::codePage || (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
    };
    found.column +=
        static_cast<std::size_t>(std::ranges::count_if(text_.substr(begin, place - begin), isFirstByte));
    return found;
}

void AseLexer::refuse(std::size_t place, const std::string& fault) const {
    const LineAndColumn found = lineAndColumn(std::min(place, text_.size()));
    throw SceneError(file_ + ": line " + std::to_string(found.line) + ", column " +
                     std::to_string(found.column) + ": " + fault);
}

void AseLexer::refuseCut(const Block& block) const {
    refuse(text_.size(), "the file ends within the block of *" + shown(block.keyword) +
                             " that begins at line " + std::to_string(lineAndColumn(block.place).line) +
                             "; it is cut off, so export it again");
}

void AseLexer::skipBlanks() {
    while (at_ < text_.size() && isBlank(text_[at_]))
        ++at_;
}

// Whether one of the format's keywords, which have capital letters, follows behind blanks and braces.
bool AseLexer::isBeforeKeyword(std::size_t at) const {
    constexpr std::size_t kShortestKeyword = 4;
    while (at < text_.size() && (isBlank(text_[at]) || text_[at] == '{' || text_[at] == '}'))
        ++at;
    if (at == text_.size() || text_[at] != '*') return false;
    const std::size_t begin = ++at;
    while (at < text_.size() && isKeywordLetter(text_[at]))
        ++at;
    return at - begin >= kShortestKeyword && (at == text_.size() || endsWord(text_[at]));
}

// Of the line from `from` on. Its last quote counts where only blanks or one brace that opens follow, but not
// for strings before a quote that a keyword follows. Goes over the line once, whatever is in it.
AseLexer::LastStrings AseLexer::lastStrings(std::size_t from) const {
    LastStrings found{from};
    found.lineEnd = std::min(text_.find_first_of("\r\n", from), text_.size());
    std::string_view rest = withoutLastBlanks(text_.substr(from, found.lineEnd - from));
    if (rest.ends_with('{')) rest = withoutLastBlanks(rest.substr(0, rest.size() - 1));
    if (!rest.ends_with('"')) return found;
    found.quote = from + rest.size() - 1;
    for (std::size_t at = found.quote; at > from; --at) {
        if (text_[at - 1] != '"' || !isBeforeKeyword(at)) continue;
        found.begin = at;
        break;
    }
    return found;
}

// The quote that ends the string whose text begins at `from`, or npos. A quote inside a name is one that
// something else than a keyword, a brace or the line's end follows. Looks at each character once, since it
// goes on from where the blanks after a quote end.
std::size_t AseLexer::closingQuote(std::size_t from) const {
    std::size_t at = from;
    while (at < text_.size() && !isLineEnd(text_[at])) {
        if (text_[at++] != '"') continue;
        const std::size_t quote = at - 1;
        while (at < text_.size() && isBlank(text_[at]) && !isLineEnd(text_[at]))
            ++at;
        const bool isLast = at == text_.size() || isLineEnd(text_[at]) || text_[at] == '{' ||
                            text_[at] == '}' || text_[at] == '*';
        if (isLast) return quote;
    }
    return std::string_view::npos;
}

// The same for a string that is an argument, which may stand alone on its line.
std::size_t AseLexer::closingQuoteOfArgument(std::size_t from) {
    if (from > last_.lineEnd) last_ = lastStrings(from);
    const bool isOneOfLast =
        last_.quote != std::string_view::npos && last_.begin <= from && from <= last_.quote;
    return isOneOfLast ? last_.quote : closingQuote(from);
}

// Of an unknown keyword, so a quote that nothing closes is passed over like any other character.
void AseLexer::skipString() {
    const std::size_t quote = closingQuote(at_ + 1);
    at_ = quote == std::string_view::npos ? at_ + 1 : quote + 1;
    if (quote != std::string_view::npos) return;
    while (at_ < text_.size() && !isLineEnd(text_[at_]))
        ++at_;
}

void AseLexer::skipBlock() {
    const Block block{keyword_, at_};
    std::size_t depth = 0;
    while (at_ < text_.size()) {
        const char c = text_[at_];
        if (c == '"') {
            skipString();
            continue;
        }
        ++at_;
        if (c == '{') ++depth;
        if (c == '}' && --depth == 0) return;
    }
    refuseCut(block);
}

std::optional<std::string_view> AseLexer::next() {
    for (;;) {
        skipBlanks();
        if (at_ == text_.size()) {
            if (!blocks_.empty()) refuseCut(blocks_.back());
            return std::nullopt;
        }
        place_ = at_;
        switch (text_[at_]) {
            case '*': {
                const std::size_t begin = ++at_;
                while (at_ < text_.size() && !endsWord(text_[at_]))
                    ++at_;
                keyword_ = text_.substr(begin, at_ - begin);
                return keyword_;
            }
            case '}':
                if (blocks_.empty()) refuse(at_, "there is no open block that this brace could close");
                ++at_;
                blocks_.pop_back();
                return std::nullopt;
            case '{':
                skipBlock();
                break;
            case '"':
                skipString();
                break;
            default:
                while (at_ < text_.size() && !endsWord(text_[at_]))
                    ++at_;
        }
    }
}

void AseLexer::enter(std::string_view keyword) {
    if (!isAtBlock()) refuseWord("the block of *" + std::string(keyword) + ", which begins with \"{\"");
    blocks_.push_back({keyword, place_});
    ++at_;
}

bool AseLexer::isAtBlock() {
    skipBlanks();
    place_ = at_;
    return at_ < text_.size() && text_[at_] == '{';
}

bool AseLexer::isAtNumber() {
    skipBlanks();
    place_ = at_;
    return at_ < text_.size() &&
           std::string_view("+-.,0123456789").find(text_[at_]) != std::string_view::npos;
}

bool AseLexer::isAtText() {
    skipBlanks();
    place_ = at_;
    return at_ < text_.size() && text_[at_] == '"';
}

std::string_view AseLexer::wholeWord() const {
    std::size_t end = place_;
    while (end < text_.size() && !endsWord(text_[end]))
        ++end;
    if (end == place_ && end < text_.size()) ++end;
    return text_.substr(place_, end - place_);
}

std::string AseLexer::quotedWord() const {
    return '"' + shown(wholeWord()) + '"';
}

void AseLexer::refuseWord(const std::string& wanted) const {
    refuse(place_, (wholeWord().empty() ? "the file ends here" : "there is " + quotedWord()) + " where " +
                       wanted + " is expected");
}

std::string_view AseLexer::text() {
    if (!isAtText()) refuseWord("a string in quotes");
    const std::size_t quote = closingQuoteOfArgument(at_ + 1);
    if (quote == std::string_view::npos) refuse(at_, "the string that begins here does not end on its line");
    const std::string_view found = text_.substr(at_ + 1, quote - at_ - 1);
    at_ = quote + 1;
    return found;
}

std::string_view AseLexer::word() {
    if (isAtText()) return text();
    const std::size_t begin = at_;
    while (at_ < text_.size() && !endsWord(text_[at_]))
        ++at_;
    if (at_ == begin) refuseWord("a word");
    return text_.substr(begin, at_ - begin);
}

// The usual case goes without a copy.
float AseLexer::anyNumber() {
    skipBlanks();
    place_ = at_;
    float value = 0;
    const char* const end = text_.data() + text_.size();
    const auto [stop, error] = std::from_chars(text_.data() + at_, end, value);
    if (error != std::errc() || (stop != end && !endsWord(*stop))) return unusualNumber();
    at_ = static_cast<std::size_t>(stop - text_.data());
    return value;
}

float AseLexer::unusualNumber() {
    std::string word(wholeWord());
    std::ranges::replace(word, ',', '.');
    if (word.starts_with('+') && !word.starts_with("+-")) word.erase(0, 1);
    auto value = markedNumber(word);
    if (!value) value = decimal(word);
    if (!value) refuseWord("a number");
    at_ += wholeWord().size();
    return *value;
}

float AseLexer::number() {
    const float value = anyNumber();
    if (!std::isfinite(value)) refuse(place_, quotedWord() + " is no number that can be used here");
    return value;
}

std::int64_t AseLexer::integer(std::int64_t low, std::int64_t high) {
    skipBlanks();
    place_ = at_;
    std::int64_t value = 0;
    const char* const end = text_.data() + text_.size();
    const auto [stop, error] = std::from_chars(text_.data() + at_, end, value);
    if (error == std::errc::invalid_argument || (stop != end && !endsWord(*stop)))
        refuseWord("a whole number");
    if (error != std::errc() || value < low || value > high) {
        refuse(place_, quotedWord() + " is out of range; from " + std::to_string(low) + " to " +
                           std::to_string(high) + " is possible");
    }
    at_ = static_cast<std::size_t>(stop - text_.data());
    return value;
}

std::uint32_t AseLexer::index(std::size_t count, const char* what) {
    skipBlanks();
    place_ = at_;
    std::uint32_t value = 0;
    const char* const end = text_.data() + text_.size();
    auto [stop, error] = std::from_chars(text_.data() + at_, end, value);
    if (stop != end && *stop == ':') ++stop;
    const bool isNumber = error != std::errc::invalid_argument && (stop == end || endsWord(*stop));
    if (!isNumber) refuseWord("the number of a " + std::string(what));
    if (error != std::errc() || value >= count) {
        refuse(place_, std::string(what) + " " + quotedWord() + " does not exist; there are " +
                           std::to_string(count));
    }
    at_ = static_cast<std::size_t>(stop - text_.data());
    return value;
}

void AseLexer::label(char name) {
    skipBlanks();
    place_ = at_;
    const bool isHere = at_ + 1 < text_.size() && text_[at_] == name && text_[at_ + 1] == ':';
    if (!isHere) refuseWord(std::string("\"") + name + ":\"");
    at_ += 2;
}

std::uint32_t AseLexer::smoothingGroups() {
    constexpr unsigned kGroups = 32;
    std::uint32_t mask = 0;
    for (;;) {
        skipBlanks();
        while (at_ < text_.size() && text_[at_] == ',')
            ++at_;
        skipBlanks();
        place_ = at_;
        if (at_ == text_.size() || endsWord(text_[at_])) return mask;
        unsigned group = 0;
        const char* const end = text_.data() + text_.size();
        const auto [stop, error] = std::from_chars(text_.data() + at_, end, group);
        const bool isNumber = stop != text_.data() + at_ && (stop == end || *stop == ',' || endsWord(*stop));
        if (!isNumber) refuseWord("the number of a smoothing group");
        if (error != std::errc() || group > kGroups)
            refuse(place_, "there is no smoothing group " + quotedWord() + "; they are 1 to 32");
        if (group > 0) mask |= 1U << (group - 1);
        at_ = static_cast<std::size_t>(stop - text_.data());
    }
}

}  // namespace velinor
