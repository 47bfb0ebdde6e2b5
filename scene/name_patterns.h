// The patterns that give nodes a meaning by their names.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

namespace re2 {
class RE2;
}

namespace velinor {

// A compiled regular expression over bytes, each byte one character. Time is linear in the text and the stack
// is not used up, however long the text: std::regex recurses for each character and overflows at some 100 KB.
class NamePattern {
  public:
    // `expression` uses what ECMAScript and RE2 have in common.
    explicit NamePattern(std::string_view expression);
    ~NamePattern();
    NamePattern(const NamePattern&) = delete;
    NamePattern& operator=(const NamePattern&) = delete;
    NamePattern(NamePattern&&) noexcept;
    NamePattern& operator=(NamePattern&&) noexcept;

    // Whether the expression matches somewhere in `text`.
    bool search(std::string_view text) const;

    // The leftmost match in `text`; a view into it.
    std::optional<std::string_view> find(std::string_view text) const;

  private:
    std::unique_ptr<re2::RE2> expression_;
};

// The four patterns, compiled once for each exporter.
struct NamePatterns {
    NamePattern webtablePattern{"^(Webtable_)([0-9]+)$"};               // web panels
    NamePattern browserNodePattern{"^(_brw_[A-Za-z0-9_]+)(_[0-9]+)$"};  // browser nodes with a number
    NamePattern numericSuffixPattern{"_[0-9]+$"};                       // a number at the end
    NamePattern cameraBoundsPattern{"^[Cc]amera([-_ ]?)[Bb]ounds$"};    // what bounds the camera's movement
};

}  // namespace velinor
