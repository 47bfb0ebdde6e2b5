// Reads the values of a scene document as the types of a snapshot. Every operation throws the SceneError of
// the place where the value is not what the format asks for.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/snapshot/document_value.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// The members of an object, checked: only known ones and "extras", each once.
class Members {
  public:
    // `known` has at most kMost names and outlives this.
    Members(const Value& object, std::span<const std::string_view> known);

    std::optional<Value> find(std::string_view name) const;
    Value required(std::string_view name) const;

    static constexpr std::size_t kMost = 12;

  private:
    std::size_t indexOf(std::string_view name) const;

    Value object_;
    std::span<const std::string_view> known_;
    std::array<std::optional<Value>, kMost> values_;
    mutable std::size_t expected_ = 0;  // where indexOf looks first
};

// What kind of thing the value is, for messages: "a string".
std::string_view describeKind(const Value& value);

// Refuses a member `name` that is not among `known`; the message names the nearest one.
[[noreturn]] void failUnknownMember(const Value& object, std::string_view name,
                                    std::span<const std::string_view> known);
std::string unknownMemberProblem(std::string_view name, std::span<const std::string_view> known);

void requireKind(const Value& value, ValueKind kind);

bool readBoolean(const Value& value);
std::u16string readText(const Value& value);

// A number that must be integral: 3.0 is the integer 3, JSON knows no difference.
std::int64_t readIntegerWithin(const Value& value, std::int64_t lowest, std::int64_t highest);
template <class Integer>
Integer readInteger(const Value& value) {
    return static_cast<Integer>(
        readIntegerWithin(value, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
}

// A number narrowed to 32 bits. Infinities and not-a-number, which CBOR can hold, are kept.
float readReal(const Value& value);

host::Point3 readPoint3(const Value& value);
SnapshotRef readReference(const Value& value);
std::optional<SnapshotRef> readReferenceOrNull(const Value& value);
std::vector<SnapshotRef> readReferences(const Value& value);
std::vector<int> readIntegers(const Value& value);

// A list of exactly `size` numbers, narrowed. `size` is at most 4.
std::array<float, 4> readReals(const Value& value, std::size_t size);

// Flat members: a list of numbers or a typed array.
std::vector<host::Point3> readFlatPoints(const Value& value);
std::vector<FaceIndices> readFlatFaces(const Value& value);
std::vector<std::uint32_t> readFlatMasks(const Value& value);
std::vector<std::uint16_t> readFlatMaterialIds(const Value& value);

}  // namespace velinor
