// The text of an ASE file, whatever encoding it has.
#pragma once

#include <string>
#include <string_view>

namespace velinor {

// How bytes beyond ASCII are to be read.
enum class AseEncoding { utf8, codePage };

// UTF-16 of a part of a text.
std::u16string decodeAse(std::string_view part, AseEncoding encoding);

// The bytes of a file as text with ASCII keywords. UTF-16, in either order, with a mark or without, becomes
// UTF-8. Text without a mark that is no UTF-8 is in the code page of its writer, which the file does not
// tell: it is taken for Windows-1252.
class AseText {
  public:
    explicit AseText(std::string bytes);

    // Lives as long as this.
    std::string_view text() const { return std::string_view(bytes_).substr(begin_); }

    // UTF-16 of a part of text().
    std::u16string decode(std::string_view part) const;
    // UTF-8 of the same, in one line, for messages.
    std::string show(std::string_view part) const;

    // Whether the encoding is a guess that matters: there are characters beyond ASCII in a code page.
    bool isCodePage() const { return encoding_ == AseEncoding::codePage; }
    AseEncoding encoding() const { return encoding_; }

  private:
    std::string bytes_;
    std::size_t begin_ = 0;  // behind the mark
    AseEncoding encoding_ = AseEncoding::utf8;
};

}  // namespace velinor
