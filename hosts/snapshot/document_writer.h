// What the snapshot writer needs of an encoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "hosts/snapshot/snapshot_io.h"

namespace velinor {

// Writes one document, front to back. Calls nest as the document does: each value of an object is preceded by
// its name.
class DocumentWriter {
  public:
    virtual ~DocumentWriter() = default;

    virtual void beginObject() = 0;
    virtual void endObject() = 0;
    virtual void name(std::string_view name) = 0;

    // A list of `count` values of any kind.
    virtual void beginList(std::size_t count) = 0;
    virtual void endList() = 0;

    virtual void null() = 0;
    virtual void boolean(bool value) = 0;
    virtual void integer(std::int64_t value) = 0;
    virtual void text(std::string_view utf8) = 0;
    virtual void real(float value) = 0;

    // A list of numbers, in JSON on one line.
    virtual void reals(std::span<const float> values) = 0;
    virtual void integers(std::span<const std::uint32_t> values) = 0;
    virtual void integers(std::span<const int> values) = 0;

    // A flat member: a typed array where the encoding has them, otherwise as above.
    virtual void flat(std::span<const float> values) = 0;
    virtual void flat(std::span<const std::uint32_t> values) = 0;

    // The document so far, moved out.
    virtual std::string take() = 0;
};

// JSON throws SceneError at a number that is not finite; the message tells its place.
std::unique_ptr<DocumentWriter> makeJsonWriter();
std::unique_ptr<DocumentWriter> makeCborWriter();

}  // namespace velinor
