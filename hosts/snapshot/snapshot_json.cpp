#include "hosts/snapshot/snapshot_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "base/text.h"

namespace velinor {
namespace {

using nlohmann::json;

constexpr std::size_t kLongestQuote = 60;
constexpr std::size_t kLongestPrefix = 100;
constexpr int kNumberOverflow = 406;

// "line 3, column 7 (byte 41)": of the `position`-th byte, counted from 1.
std::string describePosition(std::string_view bytes, std::size_t position) {
    const std::size_t offset = std::min(position == 0 ? 0 : position - 1, bytes.size());
    const std::string_view before = bytes.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;  // 0 where there is none
    return "line " + std::to_string(line) + ", column " + std::to_string(offset - lineStart + 1) + " (byte " +
           std::to_string(offset + 1) + ")";
}

// What the parser found wrong, without its own prefixes and with a short quotation:
// "[json.exception.parse_error.101] parse error at line 1, column 9: syntax error while parsing value -
// invalid literal; last read: '…'" becomes "invalid literal; last read: '…'".
std::string describeProblem(std::string text) {
    for (const std::string_view prefixEnd : {"] ", ": ", " - "}) {
        const auto end = text.find(prefixEnd);
        if (end < kLongestPrefix) text.erase(0, end + prefixEnd.size());
    }
    if (text.size() > 2 * kLongestQuote) text.resize(2 * kLongestQuote);
    return printable(toUtf8(toUtf16Lossy(text)));
}

class Handler final : public nlohmann::json_sax<json> {
  public:
    Handler(std::string_view bytes, DocumentBuilder& builder) : bytes_(bytes), builder_(builder) {}

    bool null() override { return builder_.null(), true; }
    bool boolean(bool value) override { return builder_.boolean(value), true; }
    bool number_integer(number_integer_t value) override {
        return builder_.number(static_cast<double>(value)), true;
    }
    bool number_unsigned(number_unsigned_t value) override {
        return builder_.number(static_cast<double>(value)), true;
    }
    bool number_float(number_float_t value, const string_t& /*text*/) override {
        return builder_.number(value), true;
    }
    bool string(string_t& value) override { return builder_.text(value), true; }
    bool binary(binary_t& /*value*/) override { return false; }  // not in JSON
    bool start_object(std::size_t /*count*/) override { return builder_.beginObject(), true; }
    bool key(string_t& name) override { return builder_.name(name), true; }
    bool end_object() override { return builder_.end(), true; }
    bool start_array(std::size_t /*count*/) override { return builder_.beginList(), true; }
    bool end_array() override { return builder_.end(), true; }

    bool parse_error(std::size_t position, const std::string& lastToken,
                     const nlohmann::detail::exception& error) override {
        const std::string where = describePosition(bytes_, position);
        if (error.id == kNumberOverflow) {
            builder_.fail(where + ": the number " + lastToken.substr(0, kLongestQuote) + " is too large");
        }
        if (position > bytes_.size()) builder_.fail(where + ": the document is cut off here");
        builder_.fail(where + ": not JSON: " + describeProblem(error.what()));
    }

  private:
    std::string_view bytes_;
    DocumentBuilder& builder_;
};

}  // namespace

void decodeJson(std::string_view bytes, DocumentBuilder& builder) {
    Handler handler(bytes, builder);
    json::sax_parse(bytes.begin(), bytes.end(), &handler);
}

}  // namespace velinor
