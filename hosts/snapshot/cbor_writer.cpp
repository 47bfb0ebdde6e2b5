// Writes CBOR: objects of open length, lists of definite length, numbers as 32-bit floats or the shortest
// integers, flat members as typed arrays.
#include <cbor.h>

#include <array>
#include <bit>

#include "hosts/snapshot/document_writer.h"

namespace velinor {
namespace {

static_assert(std::endian::native == std::endian::little,
              "typed arrays are little-endian and copied as they stand");

constexpr std::uint64_t kUint32Array = 70;
constexpr std::uint64_t kFloat32Array = 85;

class CborWriter final : public DocumentWriter {
  public:
    void beginObject() override { append(cbor_encode_indef_map_start); }
    void endObject() override { append(cbor_encode_break); }
    void name(std::string_view name) override { text(name); }
    void beginList(std::size_t count) override { append(cbor_encode_array_start, count); }
    void endList() override {}

    void null() override { append(cbor_encode_null); }
    void boolean(bool value) override { append(cbor_encode_bool, value); }
    void real(float value) override { append(cbor_encode_single, value); }

    void integer(std::int64_t value) override {
        if (value >= 0) {
            append(cbor_encode_uint, static_cast<std::uint64_t>(value));
        } else {
            append(cbor_encode_negint, static_cast<std::uint64_t>(-1 - value));
        }
    }

    void text(std::string_view utf8) override {
        append(cbor_encode_string_start, utf8.size());
        bytes_ += utf8;
    }

    void reals(std::span<const float> values) override {
        beginList(values.size());
        for (const float value : values)
            real(value);
    }
    void integers(std::span<const std::uint32_t> values) override { integerList(values); }
    void integers(std::span<const int> values) override { integerList(values); }
    void flat(std::span<const float> values) override { typedArray(kFloat32Array, std::as_bytes(values)); }
    void flat(std::span<const std::uint32_t> values) override {
        typedArray(kUint32Array, std::as_bytes(values));
    }

    std::string take() override { return std::move(bytes_); }

  private:
    // Appends what one of the library's encoders makes of `arguments`.
    template <class Encode, class... Arguments>
    void append(Encode encode, Arguments... arguments) {
        std::array<unsigned char, 9> buffer;  // filled below; the longest head has 9 bytes
        const std::size_t size = encode(arguments..., buffer.data(), buffer.size());
        bytes_.append(reinterpret_cast<const char*>(buffer.data()), size);
    }

    template <class Integer>
    void integerList(std::span<const Integer> values) {
        beginList(values.size());
        for (const Integer value : values)
            integer(value);
    }

    void typedArray(std::uint64_t tag, std::span<const std::byte> content) {
        append(cbor_encode_tag, tag);
        append(cbor_encode_bytestring_start, content.size());
        bytes_.append(reinterpret_cast<const char*>(content.data()), content.size());
    }

    std::string bytes_;
};

}  // namespace

std::unique_ptr<DocumentWriter> makeCborWriter() {
    return std::make_unique<CborWriter>();
}

}  // namespace velinor
