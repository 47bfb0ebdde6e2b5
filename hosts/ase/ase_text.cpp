#include "hosts/ase/ase_text.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "base/text.h"
#include "hosts/import/import_text.h"

namespace velinor {
namespace {

enum class Encoding { bytes, utf16LittleEndian, utf16BigEndian };

// Every file begins with an ASCII character, so without a mark a zero byte beside it tells the order.
Encoding encodingOf(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return Encoding::utf16LittleEndian;
    if (bytes.starts_with("\xFE\xFF")) return Encoding::utf16BigEndian;
    if (bytes.size() < 2 || (bytes[0] == '\0') == (bytes[1] == '\0')) return Encoding::bytes;
    return bytes[0] == '\0' ? Encoding::utf16BigEndian : Encoding::utf16LittleEndian;
}

// Half a unit at the end is left out.
std::string utf8OfUtf16(std::string_view bytes, Encoding encoding) {
    const std::size_t low = encoding == Encoding::utf16BigEndian ? 1 : 0;
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i + low]) |
                                         static_cast<unsigned char>(bytes[2 * i + 1 - low]) << 8U);
    }
    return toUtf8(units);
}

bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

// Where the ASCII characters from `at` on end. Nearly all of a file is ASCII, so eight are looked at
// together.
std::size_t endOfAscii(std::string_view bytes, std::size_t at) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    for (std::uint64_t word = 0; at + sizeof word <= bytes.size(); at += sizeof word) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if ((word & kHighBits) != 0) break;
    }
    while (at < bytes.size() && isAscii(bytes[at]))
        ++at;
    return at;
}

// No character of UTF-8 mixes bytes below 0x80 with others, so every run of others must be well-formed by
// itself.
bool isUtf8(std::string_view bytes) {
    for (std::size_t at = endOfAscii(bytes, 0); at < bytes.size(); at = endOfAscii(bytes, at)) {
        const std::size_t begin = at;
        while (at < bytes.size() && !isAscii(bytes[at]))
            ++at;
        if (!toUtf16(bytes.substr(begin, at - begin))) return false;
    }
    return true;
}

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

}  // namespace

std::u16string decodeAse(std::string_view part, AseEncoding encoding) {
    return encoding == AseEncoding::codePage ? fromWindows1252(part) : toUtf16Lossy(part);
}

AseText::AseText(std::string bytes) : bytes_(std::move(bytes)) {
    const Encoding encoding = encodingOf(bytes_);
    if (encoding != Encoding::bytes) bytes_ = utf8OfUtf16(bytes_, encoding);
    const bool isMarked = bytes_.starts_with(kUtf8Mark);
    if (isMarked) begin_ = kUtf8Mark.size();
    if (!isMarked && !isUtf8(bytes_)) encoding_ = AseEncoding::codePage;
}

std::u16string AseText::decode(std::string_view part) const {
    return decodeAse(part, encoding_);
}

std::string AseText::show(std::string_view part) const {
    return oneLine(toUtf8(decode(part)));
}

}  // namespace velinor
