// Reads nodes and their objects.
#include <algorithm>

#include "base/text.h"
#include "hosts/snapshot/nearest_name.h"
#include "hosts/snapshot/object_reader.h"
#include "hosts/snapshot/snapshot_names.h"
#include "hosts/snapshot/value_reader.h"

namespace velinor {
namespace {

constexpr std::string_view kNodeMembers[] = {"name",        "children", "worldTransform", "hidden",
                                             "layerHidden", "selected", "instances",      "userProperties",
                                             "material",    "object"};
constexpr std::string_view kObjectMembers[] = {"type",      "className", "boundingBox", "mesh",
                                               "faceCount", "light",     "parameters"};
constexpr std::string_view kBoxMembers[] = {"min", "max"};
constexpr std::string_view kLightMembers[] = {"type", "color", "intensity"};

host::GMatrix readTransform(const Value& value) {
    requireKind(value, ValueKind::list);
    if (value.count() != 4) value.fail(std::to_string(value.count()) + " rows where 4 are expected");
    host::GMatrix matrix;
    int row = 0;
    value.forEachElement([&](const Value& element) {
        const auto numbers = readReals(element, 3);
        std::copy_n(numbers.begin(), 3, matrix[row++].begin());
    });
    return matrix;
}

InstanceList readInstances(const Value& value, const std::optional<InstanceList>& previous) {
    std::vector<SnapshotRef> nodes = readReferences(value);
    if (previous && previous->nodes() == nodes) return *previous;
    return InstanceList(std::move(nodes));
}

// An object of values by names that the format does not fix.
template <class Item, class Read>
std::map<std::u16string, Item> readByName(const Value& value, Read read) {
    requireKind(value, ValueKind::object);
    std::map<std::u16string, Item> items;
    value.forEachMember([&](std::string_view name, const Value& item) {
        if (name == kExtrasName) return;
        if (!items.emplace(*toUtf16(name), read(item)).second) item.fail("the member is there twice");
    });
    return items;
}

std::int32_t readObjectType(const Value& value) {
    if (value.kind() == ValueKind::number) return readInteger<std::int32_t>(value);
    if (value.kind() != ValueKind::text) {
        value.fail(std::string(describeKind(value)) + " where a string or a number is expected");
    }
    const auto found = std::find(kObjectTypeNames.begin(), kObjectTypeNames.end(), value.text());
    if (found != kObjectTypeNames.end()) return static_cast<std::int32_t>(found - kObjectTypeNames.begin());
    const std::string_view nearest = nearestName(value.text(), kObjectTypeNames);
    value.fail("unknown object type " + quoted(value.text()) +
               (nearest.empty() ? "; write the host's type code as an integer"
                                : "; did you mean " + quoted(nearest) + "?"));
}

host::Box3 readBox(const Value& value) {
    const Members members(value, kBoxMembers);
    return {readPoint3(members.required("min")), readPoint3(members.required("max"))};
}

host::LightState readLight(const Value& value) {
    const Members members(value, kLightMembers);
    host::LightState light;
    if (const auto type = members.find("type")) light.type = readInteger<std::int32_t>(*type);
    if (const auto color = members.find("color")) light.color = readPoint3(*color);
    if (const auto intensity = members.find("intensity")) light.intens = readReal(*intensity);
    return light;
}

SnapshotObject readObject(const Value& value) {
    const Members members(value, kObjectMembers);
    SnapshotObject object;
    object.type = readObjectType(members.required("type"));
    if (const auto name = members.find("className")) object.className = readText(*name);
    if (const auto box = members.find("boundingBox")) object.boundingBox = readBox(*box);
    if (const auto mesh = members.find("mesh")) object.mesh = readReference(*mesh);
    if (const auto count = members.find("faceCount")) object.faceCount = readInteger<std::int32_t>(*count);
    if (const auto light = members.find("light")) object.light = readLight(*light);
    if (const auto parameters = members.find("parameters")) {
        object.parameters = readByName<float>(*parameters, readReal);
    }
    return object;
}

}  // namespace

SnapshotNode readNode(const Value& value, const std::optional<InstanceList>& previous) {
    const Members members(value, kNodeMembers);
    SnapshotNode node;
    node.name = readText(members.required("name"));
    if (const auto children = members.find("children")) node.children = readReferences(*children);
    if (const auto transform = members.find("worldTransform"))
        node.worldTransform = readTransform(*transform);
    if (const auto hidden = members.find("hidden")) node.hidden = readBoolean(*hidden);
    if (const auto hidden = members.find("layerHidden")) node.layerHidden = readBoolean(*hidden);
    if (const auto selected = members.find("selected")) node.selected = readBoolean(*selected);
    if (const auto instances = members.find("instances"))
        node.instances = readInstances(*instances, previous);
    if (const auto properties = members.find("userProperties")) {
        node.userProperties = readByName<std::int32_t>(*properties, readInteger<std::int32_t>);
    }
    if (const auto material = members.find("material")) node.material = readReferenceOrNull(*material);
    if (const auto object = members.find("object"); object && object->kind() != ValueKind::null) {
        if (object->kind() != ValueKind::object) {
            object->fail(std::string(describeKind(*object)) + " where an object or null is expected");
        }
        node.object = readObject(*object);
    }
    return node;
}

}  // namespace velinor
