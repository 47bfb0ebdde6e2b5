// The words of an ASE file, and where each of them stands.
//
//     *GEOMOBJECT {                          a keyword with a block
//         *NODE_NAME "Box [color: red]"      a keyword with a string
//         *TM_ROW3 -1.4245 6.5527 0.0000     a keyword with numbers
//     }
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/ase/ase_text.h"

namespace velinor {

// Goes through the text of an ASE file front to back. A reader asks for the keywords of a block one by one,
// takes the arguments that it wants, and enters the blocks that it knows; next() passes over all the rest.
//
//     lexer.enter("NODE_TM");
//     while (const auto keyword = lexer.next()) {
//         if (*keyword == "NODE_NAME") name = lexer.text();
//     }
//
// Every operation throws SceneError where the text breaks the grammar: "FILE: line 7, column 3: ...". Open
// blocks are kept in a list, so their depth costs no stack.
class AseLexer {
  public:
    // The text must outlive the lexer and all that it gives. `file` names it in messages, whose words and
    // columns are those of the encoding.
    AseLexer(std::string_view text, std::string file, AseEncoding encoding = AseEncoding::utf8)
        : text_(text), file_(std::move(file)), encoding_(encoding) {}

    // The next keyword of the current block, without its "*". Nothing at the block's end, which is then left,
    // and at the end of the text. Passes over what is left of the arguments and blocks of the keyword before.
    std::optional<std::string_view> next();

    // Begins the block of the keyword that was asked last.
    void enter(std::string_view keyword);

    // How many blocks are open.
    std::size_t depth() const { return blocks_.size(); }

    // Whether a block, a string or a number comes next.
    bool isAtBlock();
    bool isAtText();
    bool isAtNumber();

    // What stands in quotes. Nothing is escaped: a string that stands alone with its keyword, or with the
    // brace that follows, ends at the last quote of its line. Where more keywords follow on the line, it ends
    // at the first quote that a keyword, a brace or the end of the line follows.
    std::string_view text();

    // A word without quotes, or a string.
    std::string_view word();

    // A number, with a point or a comma. Infinite or not a number where the writer had no number to give
    // ("1.#INF", "-1.#IND", "nan") or where it does not fit into 32 bits.
    float anyNumber();

    // The same, but refused where it is not finite.
    float number();

    // A whole number from `low` to `high`.
    std::int64_t integer(std::int64_t low, std::int64_t high);

    // An index below `count`, with or without a colon behind it. `what` names the things in the message
    // ("vertex").
    std::uint32_t index(std::size_t count, const char* what);

    // Passes over the name of a corner: "A:".
    void label(char name);

    // The groups of a smoothing list, a bit each: numbers from 1 to 32 with commas between them, or nothing.
    // 0 stands for no group.
    std::uint32_t smoothingGroups();

    // Where the argument taken last begins; for refuse().
    std::size_t place() const { return place_; }
    // How many bytes of the text are left.
    std::size_t rest() const { return text_.size() - at_; }
    std::size_t position() const { return at_; }

    [[noreturn]] void refuse(std::size_t place, const std::string& fault) const;

  private:
    struct Block {
        std::string_view keyword;
        std::size_t place = 0;
    };

    struct LineAndColumn {
        std::size_t line = 1;
        std::size_t column = 1;
    };

    // The strings that begin at `begin` or later on a line and end at its last quote.
    struct LastStrings {
        std::size_t begin = 0;
        std::size_t quote = std::string_view::npos;  // npos: there are none
        std::size_t lineEnd = 0;
    };

    void skipBlanks();
    void skipString();
    void skipBlock();
    std::size_t closingQuote(std::size_t from) const;
    std::size_t closingQuoteOfArgument(std::size_t from);
    LastStrings lastStrings(std::size_t from) const;
    bool isBeforeKeyword(std::size_t at) const;
    std::string_view wholeWord() const;
    std::string shown(std::string_view word) const;
    std::string quotedWord() const;
    LineAndColumn lineAndColumn(std::size_t place) const;
    [[noreturn]] void refuseWord(const std::string& wanted) const;
    [[noreturn]] void refuseCut(const Block& block) const;
    float unusualNumber();

    std::string_view text_;
    std::string file_;
    AseEncoding encoding_;
    std::size_t at_ = 0;
    std::size_t place_ = 0;
    std::string_view keyword_;  // the one asked last
    LastStrings last_;          // of the line on which a string was met last
    std::vector<Block> blocks_;
};

}  // namespace velinor
