#include "hosts/snapshot/value_reader.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

#include "base/text.h"
#include "hosts/snapshot/nearest_name.h"
#include "hosts/snapshot/snapshot_names.h"

namespace velinor {
namespace {

static_assert(std::endian::native == std::endian::little,
              "typed arrays are little-endian and copied as they stand");
static_assert(sizeof(host::Point3) == 12 && sizeof(FaceIndices) == 12,
              "typed arrays are copied as they stand");

std::string_view kindName(ValueKind kind) {
    switch (kind) {
        case ValueKind::null:
            return "null";
        case ValueKind::boolean:
            return "a boolean";
        case ValueKind::number:
            return "a number";
        case ValueKind::text:
            return "a string";
        case ValueKind::typedArray:
            return "a typed array";
        case ValueKind::list:
            return "a list";
        case ValueKind::object:
            return "an object";
        case ValueKind::name:
            break;
    }
    return "a name";
}

[[noreturn]] void failKind(const Value& value, std::string_view expected) {
    value.fail(std::string(describeKind(value)) + " where " + std::string(expected) + " is expected");
}

std::string numberText(double number) {
    std::array<char, 32> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::int64_t toInteger(double number, std::int64_t lowest, std::int64_t highest, const Value& place) {
    if (!(number >= static_cast<double>(lowest) && number <= static_cast<double>(highest))) {
        place.fail(numberText(number) + " is out of range (" + std::to_string(lowest) + " to " +
                   std::to_string(highest) + ")");
    }
    if (number != std::trunc(number)) place.fail(numberText(number) + " is not an integer");
    return static_cast<std::int64_t>(number);
}

// The numbers of a list, or the SceneError of the first element that is none.
std::span<const double> requireNumbers(const Value& list) {
    requireKind(list, ValueKind::list);
    const auto numbers = list.numbers();
    if (numbers) return *numbers;
    list.forEachElement([](const Value& element) { requireKind(element, ValueKind::number); });
    failKind(list, "a list of numbers");
}

template <class Source>
Source typedElement(std::string_view bytes, std::size_t index) {
    Source element;
    std::memcpy(&element, bytes.data() + index * sizeof(Source), sizeof(Source));
    return element;
}

// Calls store(index, number, place) for each of the numbers of a flat member; `place` makes the number's
// Value.
template <class Source, class Store>
void forEachTypedNumber(const Value& value, Store store) {
    const std::string_view bytes = value.typedArrayBytes();
    for (std::size_t i = 0; i < bytes.size() / sizeof(Source); ++i) {
        store(i, static_cast<double>(typedElement<Source>(bytes, i)));
    }
}

template <class Store>
void forEachFlatNumber(const Value& value, Store store) {
    if (value.kind() != ValueKind::typedArray) {
        std::size_t index = 0;
        for (const double number : requireNumbers(value))
            store(index++, number);
        return;
    }
    switch (value.typedArrayKind()) {
        case TypedArrayKind::float32:
            return forEachTypedNumber<float>(value, store);
        case TypedArrayKind::uint32:
            return forEachTypedNumber<std::uint32_t>(value, store);
        case TypedArrayKind::sint32:
            return forEachTypedNumber<std::int32_t>(value, store);
    }
}

std::size_t flatCount(const Value& value) {
    if (value.kind() == ValueKind::typedArray) return value.typedArrayBytes().size() / 4;
    if (value.kind() != ValueKind::list) failKind(value, "a list of numbers or a typed array");
    return value.count();
}

std::size_t flatTriples(const Value& value, std::string_view item) {
    const std::size_t count = flatCount(value);
    if (count % 3 != 0) {
        value.fail(std::to_string(count) + " numbers, where 3 a " + std::string(item) + " are expected");
    }
    return count / 3;
}

// Copies a typed array of the same layout as `items`. False where it is another kind of value.
template <class Item>
bool copyTyped(const Value& value, TypedArrayKind kind, std::vector<Item>& items) {
    if (value.kind() != ValueKind::typedArray || value.typedArrayKind() != kind) return false;
    const std::string_view bytes = value.typedArrayBytes();
    if (!bytes.empty()) std::memcpy(items.data(), bytes.data(), bytes.size());
    return true;
}

template <class Integer>
std::vector<Integer> readFlatIntegers(const Value& value) {
    std::vector<Integer> items(flatCount(value));
    forEachFlatNumber(value, [&](std::size_t i, double number) {
        items[i] = static_cast<Integer>(
            toInteger(number, 0, std::numeric_limits<Integer>::max(), value.numberAt(i)));
    });
    return items;
}

}  // namespace

Members::Members(const Value& object, std::span<const std::string_view> known)
    : object_(object), known_(known) {
    requireKind(object, ValueKind::object);
    bool hasExtras = false;
    object.forEachMember([&](std::string_view name, const Value& value) {
        if (name == kExtrasName) {
            if (hasExtras) value.fail("the member is there twice");
            hasExtras = true;
            return;
        }
        const std::size_t index = indexOf(name);
        if (index == known.size()) failUnknownMember(object, name, known);
        if (values_[index]) value.fail("the member is there twice");
        values_[index] = value;
    });
}

// Names are mostly written, and always asked for, in the order of `known`: behind the latest one the next is
// found at once. The number of known names where it is none of them.
std::size_t Members::indexOf(std::string_view name) const {
    for (std::size_t i = 0; i < known_.size(); ++i) {
        const std::size_t index = (expected_ + i) % known_.size();
        if (known_[index] != name) continue;
        expected_ = index + 1;
        return index;
    }
    return known_.size();
}

std::optional<Value> Members::find(std::string_view name) const {
    const std::size_t index = indexOf(name);
    return index < known_.size() ? values_[index] : std::nullopt;
}

Value Members::required(std::string_view name) const {
    if (const auto value = find(name)) return *value;
    object_.fail("the member " + quoted(name) + " is missing");
}

std::string_view describeKind(const Value& value) {
    return kindName(value.kind());
}

std::string unknownMemberProblem(std::string_view name, std::span<const std::string_view> known) {
    std::string problem = "unknown member " + quoted(name);
    const std::string_view nearest = nearestName(name, known);
    if (!nearest.empty()) problem += "; did you mean " + quoted(nearest) + "?";
    return problem;
}

void failUnknownMember(const Value& object, std::string_view name, std::span<const std::string_view> known) {
    object.fail(unknownMemberProblem(name, known));
}

void requireKind(const Value& value, ValueKind kind) {
    if (value.kind() != kind) failKind(value, kindName(kind));
}

bool readBoolean(const Value& value) {
    requireKind(value, ValueKind::boolean);
    return value.boolean();
}

std::u16string readText(const Value& value) {
    requireKind(value, ValueKind::text);
    return *toUtf16(value.text());  // the decoders let only well-formed text through
}

std::int64_t readIntegerWithin(const Value& value, std::int64_t lowest, std::int64_t highest) {
    requireKind(value, ValueKind::number);
    return toInteger(value.number(), lowest, highest, value);
}

float readReal(const Value& value) {
    requireKind(value, ValueKind::number);
    return static_cast<float>(value.number());
}

std::array<float, 4> readReals(const Value& value, std::size_t size) {
    const auto numbers = requireNumbers(value);
    if (numbers.size() != size) {
        value.fail(std::to_string(numbers.size()) + " numbers where " + std::to_string(size) +
                   " are expected");
    }
    std::array<float, 4> reals{};
    for (std::size_t i = 0; i < size; ++i) {
        reals.at(i) = static_cast<float>(numbers[i]);
    }
    return reals;
}

host::Point3 readPoint3(const Value& value) {
    const auto reals = readReals(value, 3);
    return {reals[0], reals[1], reals[2]};
}

SnapshotRef readReference(const Value& value) {
    return readInteger<SnapshotRef>(value);
}

std::optional<SnapshotRef> readReferenceOrNull(const Value& value) {
    if (value.kind() == ValueKind::null) return std::nullopt;
    if (value.kind() != ValueKind::number) failKind(value, "a reference or null");
    return readReference(value);
}

std::vector<SnapshotRef> readReferences(const Value& value) {
    requireNumbers(value);
    return readFlatIntegers<SnapshotRef>(value);
}

std::vector<int> readIntegers(const Value& value) {
    std::vector<int> integers;
    std::size_t index = 0;
    for (const double number : requireNumbers(value)) {
        integers.push_back(
            static_cast<int>(toInteger(number, std::numeric_limits<int>::min(),
                                       std::numeric_limits<int>::max(), value.numberAt(index))));
        ++index;
    }
    return integers;
}

std::vector<host::Point3> readFlatPoints(const Value& value) {
    std::vector<host::Point3> points(flatTriples(value, "vertex"));
    if (copyTyped(value, TypedArrayKind::float32, points)) return points;
    forEachFlatNumber(value, [&](std::size_t i, double number) {
        host::Point3& point = points[i / 3];
        (i % 3 == 0 ? point.x : i % 3 == 1 ? point.y : point.z) = static_cast<float>(number);
    });
    return points;
}

std::vector<FaceIndices> readFlatFaces(const Value& value) {
    std::vector<FaceIndices> faces(flatTriples(value, "face"));
    if (copyTyped(value, TypedArrayKind::uint32, faces)) return faces;
    forEachFlatNumber(value, [&](std::size_t i, double number) {
        faces[i / 3][i % 3] = static_cast<std::uint32_t>(
            toInteger(number, 0, std::numeric_limits<std::uint32_t>::max(), value.numberAt(i)));
    });
    return faces;
}

std::vector<std::uint32_t> readFlatMasks(const Value& value) {
    if (value.kind() == ValueKind::typedArray && value.typedArrayKind() == TypedArrayKind::uint32) {
        std::vector<std::uint32_t> masks(flatCount(value));
        copyTyped(value, TypedArrayKind::uint32, masks);
        return masks;
    }
    return readFlatIntegers<std::uint32_t>(value);
}

std::vector<std::uint16_t> readFlatMaterialIds(const Value& value) {
    return readFlatIntegers<std::uint16_t>(value);
}

}  // namespace velinor
