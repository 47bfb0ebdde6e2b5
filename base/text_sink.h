// Where long text goes piece by piece, so that it need not exist as a whole.
#pragma once

#include <string>
#include <string_view>

namespace velinor {

// Takes text front to back.
class TextSink {
  public:
    virtual ~TextSink() = default;

    virtual void write(std::string_view text) = 0;
};

// A TextSink that keeps everything in one string.
class StringSink final : public TextSink {
  public:
    void write(std::string_view text) override { text_.append(text); }

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

}  // namespace velinor
