// Patterns of names, as shells have them for files.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace re2 {
class RE2;
}

namespace velinor {

// "*" stands for any text, "?" for any character, "[a-z]" for one of a set and "[!a-z]" for one beyond it;
// "\" takes the next character as it stands. A "[" without its "]" is itself. The whole name has to fit;
// capital and small letters differ. Names and patterns are UTF-8. Takes time linear in the length of the
// name.
class NameGlob {
  public:
    // Throws std::invalid_argument, with what is wrong, for a set that is none ("[z-a]") and a pattern of
    // more than 64 KiB.
    explicit NameGlob(std::string_view pattern);
    NameGlob(NameGlob&&) noexcept;
    NameGlob& operator=(NameGlob&&) noexcept;
    NameGlob(const NameGlob&) = delete;
    NameGlob& operator=(const NameGlob&) = delete;
    ~NameGlob();

    bool matches(std::string_view name) const;

  private:
    std::unique_ptr<re2::RE2> expression_;
};

}  // namespace velinor
