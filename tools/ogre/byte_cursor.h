// Reads little-endian numbers and texts out of bytes, never past their end.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace velinor {

// Bytes that break the form that they should have. what() says where in the file and what was expected.
class ByteFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A place in bytes that somebody else keeps. All operations throw ByteFault where the bytes do not suffice.
class ByteCursor {
  public:
    // `offset` is where `bytes` start in their file; messages count from there.
    explicit ByteCursor(std::string_view bytes, std::size_t offset = 0) : bytes_(bytes), offset_(offset) {}

    std::size_t left() const { return bytes_.size(); }
    std::size_t offset() const { return offset_; }

    std::string_view take(std::uint64_t size, const char* what) {
        if (size > bytes_.size()) {
            throw ByteFault(std::string(what) + " at byte " + std::to_string(offset_) + " needs " +
                            std::to_string(size) + " bytes, " + std::to_string(bytes_.size()) + " are left");
        }
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        offset_ += size;
        return taken;
    }

    template <typename Number>
    Number number(const char* what) {
        static_assert(std::endian::native == std::endian::little);
        Number value{};
        std::memcpy(&value, take(sizeof value, what).data(), sizeof value);
        return value;
    }

    bool flag(const char* what) {
        const auto value = number<std::uint8_t>(what);
        if (value > 1) {
            throw ByteFault(std::string(what) + " at byte " + std::to_string(offset_ - 1) + " is " +
                            std::to_string(value) + ", not 0 or 1");
        }
        return value == 1;
    }

    // What stands before the next line feed, which is taken too.
    std::string_view line(const char* what) {
        const std::size_t end = bytes_.find('\n');
        if (end == std::string_view::npos) {
            throw ByteFault(std::string(what) + " at byte " + std::to_string(offset_) + " has no end");
        }
        return take(end + 1, what).substr(0, end);
    }

  private:
    std::string_view bytes_;
    std::size_t offset_;
};

}  // namespace velinor
