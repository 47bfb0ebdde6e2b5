// Reads materials and texture maps.
#include "hosts/snapshot/object_reader.h"
#include "hosts/snapshot/value_reader.h"

namespace velinor {
namespace {

constexpr std::string_view kMaterialMembers[] = {"class",      "name",     "subMaterials",
                                                 "properties", "diffuse",  "opacity",
                                                 "glossiness", "specular", "textureMaps"};
constexpr std::string_view kSubMaterialMembers[] = {"id", "material"};
constexpr std::string_view kPropertyMembers[] = {"name", "value", "map"};
constexpr std::string_view kTextureMapMembers[] = {"slot", "map"};
constexpr std::string_view kMapMembers[] = {"class", "bitmap", "subMaps"};

template <class Item, class Read>
std::vector<Item> readList(const Value& value, Read read) {
    requireKind(value, ValueKind::list);
    std::vector<Item> items;
    items.reserve(value.count());
    value.forEachElement([&](const Value& element) { items.push_back(read(element)); });
    return items;
}

SnapshotSubMaterial readSubMaterial(const Value& value) {
    const Members members(value, kSubMaterialMembers);
    return {readInteger<std::int32_t>(members.required("id")),
            readReferenceOrNull(members.required("material"))};
}

decltype(SnapshotProperty::value) readPropertyValue(const Value& value) {
    if (value.kind() == ValueKind::number) return readReal(value);
    if (value.kind() == ValueKind::text) return readText(value);
    if (value.kind() != ValueKind::list) {
        value.fail(std::string(describeKind(value)) +
                   " where a number, 3 or 4 numbers or a string is expected");
    }
    if (value.count() == 3) return readPoint3(value);
    if (value.count() != 4) value.fail(std::to_string(value.count()) + " numbers where 3 or 4 are expected");
    const auto reals = readReals(value, 4);
    return host::Point4{reals[0], reals[1], reals[2], reals[3]};
}

SnapshotProperty readProperty(const Value& value) {
    const Members members(value, kPropertyMembers);
    const auto plain = members.find("value");
    const auto map = members.find("map");
    if (plain.has_value() == map.has_value()) value.fail("a property has either \"value\" or \"map\"");
    SnapshotProperty property{readText(members.required("name")), SnapshotMapProperty{}};
    if (plain) {
        property.value = readPropertyValue(*plain);
    } else {
        property.value = SnapshotMapProperty{readReferenceOrNull(*map)};
    }
    return property;
}

SnapshotTextureMap readTextureMap(const Value& value) {
    const Members members(value, kTextureMapMembers);
    return {readInteger<std::int32_t>(members.required("slot")), readReference(members.required("map"))};
}

decltype(SnapshotMaterial::specular) readSpecular(const Value& value) {
    if (value.kind() == ValueKind::number) return readReal(value);
    if (value.kind() == ValueKind::list) return readPoint3(value);
    value.fail(std::string(describeKind(value)) + " where a number or 3 numbers are expected");
}

}  // namespace

SnapshotMaterial readMaterial(const Value& value) {
    const Members members(value, kMaterialMembers);
    SnapshotMaterial material;
    material.className = readText(members.required("class"));
    material.name = readText(members.required("name"));
    if (const auto list = members.find("subMaterials")) {
        material.subMaterials = readList<SnapshotSubMaterial>(*list, readSubMaterial);
    }
    if (const auto list = members.find("properties")) {
        material.properties = readList<SnapshotProperty>(*list, readProperty);
    }
    if (const auto diffuse = members.find("diffuse")) material.diffuse = readPoint3(*diffuse);
    if (const auto opacity = members.find("opacity")) material.opacity = readReal(*opacity);
    if (const auto glossiness = members.find("glossiness")) material.glossiness = readReal(*glossiness);
    if (const auto specular = members.find("specular")) material.specular = readSpecular(*specular);
    if (const auto list = members.find("textureMaps")) {
        material.textureMaps = readList<SnapshotTextureMap>(*list, readTextureMap);
    }
    return material;
}

SnapshotMap readMap(const Value& value) {
    const Members members(value, kMapMembers);
    SnapshotMap map;
    map.className = readText(members.required("class"));
    if (const auto bitmap = members.find("bitmap")) map.bitmap = readText(*bitmap);
    if (const auto list = members.find("subMaps")) {
        map.subMaps = readList<std::optional<SnapshotRef>>(*list, readReferenceOrNull);
    }
    return map;
}

}  // namespace velinor
