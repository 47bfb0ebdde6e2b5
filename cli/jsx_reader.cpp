#include "cli/jsx_reader.h"

#include <algorithm>
#include <optional>

namespace velinor {
namespace {

constexpr std::string_view kSpreadStart = "{...{ ";
constexpr std::string_view kBraceEnd = " }}";

bool isName(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
}

class JsxReader {
  public:
    JsxReader(std::string_view text, const std::function<void(const JsxElement&)>& take)
        : rest_(text), take_(take) {}

    JsxFault read() {
        while (!fault_ && !isAtEnd())
            readLine();
        if (!fault_ && !open_.empty())
            fail("the element \"" + std::string(open_.back()) + "\" is not closed");
        if (!fault_ && !hasRoot_) fail("there is no element");
        return fault_.value_or(JsxFault{0, ""});
    }

  private:
    // A package's text ends with a line feed of its own after the last element's.
    bool isAtEnd() const {
        return rest_.empty() || (open_.empty() && hasRoot_ && (rest_ == "\n" || rest_ == "\r\n"));
    }

    void fail(std::string text) { fault_ = JsxFault{line_, std::move(text)}; }

    // Takes the next line off the rest, without its line end (CR LF counts as one).
    std::string_view takeLine() {
        ++line_;
        const std::size_t end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }

    // Takes `depth` tabs off `line`; false where it starts with more or fewer.
    static bool takeTabs(std::string_view& line, std::size_t depth) {
        const std::size_t tabs = std::min(line.find_first_not_of('\t'), line.size());
        if (tabs != depth) return false;
        line.remove_prefix(depth);
        return true;
    }

    void readLine() {
        std::string_view line = takeLine();
        const bool isEnd = line.substr(std::min(line.find_first_not_of('\t'), line.size())).starts_with("</");
        const std::size_t depth = open_.size() - (isEnd && !open_.empty() ? 1 : 0);
        if (!takeTabs(line, depth))
            return fail("the line is not indented by " + std::to_string(depth) + " tabs");
        if (isEnd) return readEnd(line);
        if (!line.starts_with('<')) return fail("an element was expected");
        line.remove_prefix(1);
        readStart(line);
    }

    void readEnd(std::string_view line) {
        if (open_.empty()) return fail("an end without a start");
        line.remove_prefix(2);
        if (!line.ends_with('>')) return fail("the end of an element does not end with \">\"");
        line.remove_suffix(1);
        if (line != open_.back()) {
            return fail("\"" + std::string(line) + "\" ends where \"" + std::string(open_.back()) +
                        "\" is open");
        }
        open_.pop_back();
    }

    void readStart(std::string_view name) {
        const bool isWhole = name.ends_with('>');
        if (isWhole) name.remove_suffix(1);
        if (!isName(name)) return fail("\"" + std::string(name.substr(0, 80)) + "\" is no element name");
        if (open_.empty() && hasRoot_) return fail("there is a second element beside the root");
        hasRoot_ = true;
        JsxElement element{name, open_.size(), line_, {}, open_.empty() ? std::string_view() : open_.back()};
        open_.push_back(name);
        if (!isWhole) readAttributes(element);
        if (!fault_) take_(element);
    }

    void readAttributes(JsxElement& element) {
        bool isLast = false;
        while (!isLast && !fault_) {
            if (rest_.empty()) return fail("the file ends inside an element");
            std::string_view line = takeLine();
            if (!takeTabs(line, open_.size())) {
                return fail("an attribute is not indented by " + std::to_string(open_.size()) + " tabs");
            }
            readAttribute(line, element, isLast);
        }
    }

    void readAttribute(std::string_view line, JsxElement& element, bool& isLast) {
        std::optional<JsxAttribute> attribute =
            line.starts_with(kSpreadStart) ? readSpread(line, isLast) : readPlain(line, isLast);
        if (!attribute) return fail("\"" + std::string(line.substr(0, 80)) + "\" is no attribute");
        if (!element.attributes.empty() && element.attributes.back().key >= attribute->key) {
            return fail("the attribute \"" + std::string(attribute->key) + "\" is repeated or out of order");
        }
        element.attributes.push_back(*attribute);
    }

    // The value ends at the first line that ends like one: names with line ends in them are part of it.
    std::optional<JsxAttribute> readSpread(std::string_view line, bool& isLast) {
        const char* const start = line.data() + kSpreadStart.size();
        while (!endsLikeSpread(line)) {
            if (rest_.empty()) return std::nullopt;
            line = takeLine();
        }
        isLast = line.ends_with('>');
        if (isLast) line.remove_suffix(1);
        line.remove_suffix(kBraceEnd.size());
        const char* const end = line.data() + line.size();
        if (end < start) return std::nullopt;
        return JsxAttribute{"...", std::string_view(start, static_cast<std::size_t>(end - start))};
    }

    static bool endsLikeSpread(std::string_view line) {
        return line.ends_with(kBraceEnd) || line.ends_with(" }}>");
    }

    // A value ends with a quote or a brace; a ">" after it ends the element's start. A value that itself ends
    // with
    // ">" has its quote after it.
    std::optional<JsxAttribute> readPlain(std::string_view line, bool& isLast) {
        const std::string_view whole = joinPlain(line);
        line = whole;
        isLast = line.ends_with('>');
        if (isLast) line.remove_suffix(1);
        const std::size_t separator = std::min(line.find("=\""), line.find("={{ "));
        if (separator == 0 || separator == std::string_view::npos) return std::nullopt;
        const std::string_view value = line.substr(separator + 1);
        const bool isQuoted = value.size() >= 2 && value.starts_with('"') && value.ends_with('"');
        const bool isBraced = value.starts_with("{{ ") && value.ends_with(kBraceEnd);
        if (!isQuoted && !isBraced) return std::nullopt;
        return JsxAttribute{line.substr(0, separator + 1), value};
    }

    // A braced value may hold a name with line ends: lines are joined until one ends like a value.
    std::string_view joinPlain(std::string_view line) {
        if (line.find("={{ ") == std::string_view::npos) return line;
        const char* const start = line.data();
        while (!endsLikeSpread(line) && !rest_.empty())
            line = takeLine();
        return {start, static_cast<std::size_t>(line.data() + line.size() - start)};
    }

    std::string_view rest_;
    const std::function<void(const JsxElement&)>& take_;
    std::vector<std::string_view> open_;  // the names of the elements around the next line
    std::optional<JsxFault> fault_;
    std::size_t line_ = 0;
    bool hasRoot_ = false;
};

}  // namespace

JsxFault readJsx(std::string_view text, const std::function<void(const JsxElement&)>& take) {
    return JsxReader(text, take).read();
}

}  // namespace velinor
