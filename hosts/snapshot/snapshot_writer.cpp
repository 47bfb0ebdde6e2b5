// Writes snapshots: which members stand where. Members that hold their default are left out; whether a float
// is its default is decided by its bits, so that a minus zero is kept.
#include <array>
#include <bit>

#include "base/text.h"
#include "hosts/snapshot/document_writer.h"
#include "hosts/snapshot/snapshot_io.h"
#include "hosts/snapshot/snapshot_names.h"

namespace velinor {
namespace {

using host::Point3;

static_assert(sizeof(Point3) == 12 && sizeof(FaceIndices) == 12, "flat members are written as they stand");

template <class Item>
bool sameBits(const Item& a, const Item& b) {
    using Bits = std::array<std::uint32_t, sizeof(Item) / sizeof(std::uint32_t)>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

std::span<const float> floatsOf(const std::vector<Point3>& points) {
    return {points.empty() ? nullptr : &points.front().x, 3 * points.size()};
}

std::span<const std::uint32_t> indicesOf(const std::vector<FaceIndices>& faces) {
    return {faces.empty() ? nullptr : faces.front().data(), 3 * faces.size()};
}

class SceneWriter {
  public:
    explicit SceneWriter(DocumentWriter& out) : out_(out) {}

    void write(const SceneSnapshot& scene) {
        out_.beginObject();
        text("format", kFormatName);
        integer("version", kFormatVersion);
        if (scene.animationStart != 0) integer("animationStart", scene.animationStart);
        if (!scene.assetFolders.empty()) {
            list("assetFolders", scene.assetFolders,
                 [this](const auto& folder) { out_.text(toUtf8(folder)); });
        }
        integers("roots", scene.roots);
        list("nodes", scene.nodes, [this](const auto& node) { writeNode(node); });
        listUnlessEmpty("meshes", scene.meshes, [this](const auto& mesh) { writeMesh(mesh); });
        listUnlessEmpty("materials", scene.materials,
                        [this](const auto& material) { writeMaterial(material); });
        listUnlessEmpty("maps", scene.maps, [this](const auto& map) { writeMap(map); });
        out_.endObject();
    }

  private:
    void integer(std::string_view name, std::int64_t value) {
        out_.name(name);
        out_.integer(value);
    }

    void text(std::string_view name, std::string_view utf8) {
        out_.name(name);
        out_.text(utf8);
    }

    void text(std::string_view name, const std::u16string& utf16) { text(name, toUtf8(utf16)); }

    void real(std::string_view name, float value) {
        out_.name(name);
        out_.real(value);
    }

    void point(std::string_view name, const Point3& p) {
        out_.name(name);
        writePoint(p);
    }

    void writePoint(const Point3& p) { out_.reals(std::array{p.x, p.y, p.z}); }

    void flag(std::string_view name, bool value) {
        if (!value) return;
        out_.name(name);
        out_.boolean(value);
    }

    template <class Integer>
    void integers(std::string_view name, const std::vector<Integer>& values) {
        out_.name(name);
        out_.integers(std::span(values));
    }

    void points(std::string_view name, const std::vector<Point3>& values) {
        out_.name(name);
        out_.flat(floatsOf(values));
    }

    void faces(std::string_view name, const std::vector<FaceIndices>& values) {
        out_.name(name);
        out_.flat(indicesOf(values));
    }

    template <class Items, class Write>
    void list(std::string_view name, const Items& items, Write write) {
        out_.name(name);
        out_.beginList(items.size());
        for (const auto& item : items)
            write(item);
        out_.endList();
    }

    template <class Items, class Write>
    void listUnlessEmpty(std::string_view name, const Items& items, Write write) {
        if (!items.empty()) list(name, items, write);
    }

    // Two keys that differ only in unpaired surrogates are one in UTF-8: the first stays.
    template <class Item, class Write>
    void byName(std::string_view name, const std::map<std::u16string, Item>& items, Write write) {
        if (items.empty()) return;
        std::map<std::string, Item> utf8;
        for (const auto& [key, value] : items)
            utf8.emplace(toUtf8(key), value);
        out_.name(name);
        out_.beginObject();
        for (const auto& [key, value] : utf8) {
            out_.name(key);
            write(value);
        }
        out_.endObject();
    }

    void writeReference(const std::optional<SnapshotRef>& ref) {
        if (ref) {
            out_.integer(*ref);
        } else {
            out_.null();
        }
    }

    void reference(std::string_view name, const std::optional<SnapshotRef>& ref) {
        out_.name(name);
        writeReference(ref);
    }

    void writeNode(const SnapshotNode& node) {
        out_.beginObject();
        text("name", node.name);
        if (!node.children.empty()) integers("children", node.children);
        if (!sameBits(node.worldTransform, host::GMatrix())) writeTransform(node.worldTransform);
        flag("hidden", node.hidden);
        flag("layerHidden", node.layerHidden);
        flag("selected", node.selected);
        if (node.instances) integers("instances", node.instances->nodes());
        byName("userProperties", node.userProperties, [this](std::int32_t value) { out_.integer(value); });
        if (node.material) reference("material", node.material);
        if (node.object) writeObject(*node.object);
        out_.endObject();
    }

    void writeTransform(const host::GMatrix& matrix) {
        out_.name("worldTransform");
        out_.beginList(4);
        for (int row = 0; row < 4; ++row)
            out_.reals(std::span(matrix[row]).first(3));
        out_.endList();
    }

    void writeObjectType(std::int32_t type) {
        const auto code = static_cast<std::size_t>(type);
        if (type >= 0 && code < kObjectTypeNames.size()) {
            text("type", kObjectTypeNames.at(code));
        } else {
            integer("type", type);
        }
    }

    void writeObject(const SnapshotObject& object) {
        out_.name("object");
        out_.beginObject();
        writeObjectType(object.type);
        if (!object.className.empty()) text("className", object.className);
        if (object.boundingBox) {
            out_.name("boundingBox");
            out_.beginObject();
            point("min", object.boundingBox->pmin);
            point("max", object.boundingBox->pmax);
            out_.endObject();
        }
        if (object.mesh) integer("mesh", *object.mesh);
        if (object.faceCount) integer("faceCount", *object.faceCount);
        if (object.light) writeLight(*object.light);
        byName("parameters", object.parameters, [this](float value) { out_.real(value); });
        out_.endObject();
    }

    void writeLight(const host::LightState& light) {
        const host::LightState defaults;
        out_.name("light");
        out_.beginObject();
        if (light.type != defaults.type) integer("type", light.type);
        if (!sameBits(light.color, defaults.color)) point("color", light.color);
        if (!sameBits(light.intens, defaults.intens)) real("intensity", light.intens);
        out_.endObject();
    }

    void writeMesh(const SnapshotMesh& mesh) {
        out_.beginObject();
        points("vertices", mesh.vertices);
        faces("faces", mesh.faces);
        if (!mesh.smoothing.empty()) {
            out_.name("smoothing");
            out_.flat(std::span(mesh.smoothing));
        }
        if (!mesh.materialIds.empty()) {
            out_.name("materialIds");
            out_.flat(std::vector<std::uint32_t>(mesh.materialIds.begin(), mesh.materialIds.end()));
        }
        if (mesh.activeMaterialIds) integers("activeMaterialIds", *mesh.activeMaterialIds);
        if (mesh.mapChannels) integer("mapChannels", *mesh.mapChannels);
        if (!mesh.maps.empty()) writeChannels(mesh.maps);
        if (!mesh.specifiedNormals.empty()) points("specifiedNormals", mesh.specifiedNormals);
        listUnlessEmpty("renderVertices", mesh.renderVertices,
                        [this](const auto& vertex) { writeRenderVertex(vertex); });
        out_.endObject();
    }

    void writeChannels(const std::map<std::int32_t, SnapshotMapChannel>& channels) {
        out_.name("maps");
        out_.beginObject();
        for (const auto& [number, channel] : channels) {
            out_.name(std::to_string(number));
            out_.beginObject();
            points("vertices", channel.vertices);
            if (!channel.faces.empty()) faces("faces", channel.faces);
            out_.endObject();
        }
        out_.endObject();
    }

    void writeRenderVertex(const std::optional<SnapshotRenderVertex>& vertex) {
        if (!vertex) return out_.null();
        out_.beginObject();
        if (const auto* specified = std::get_if<Point3>(&*vertex)) {
            point("specified", *specified);
        } else {
            list("normals", std::get<std::vector<host::RNormal>>(*vertex),
                 [this](const host::RNormal& normal) {
                     out_.beginObject();
                     point("normal", normal.normal);
                     integer("smoothing", normal.smGroup);
                     out_.endObject();
                 });
        }
        out_.endObject();
    }

    void writeMaterial(const SnapshotMaterial& material) {
        out_.beginObject();
        text("class", material.className);
        text("name", material.name);
        listUnlessEmpty("subMaterials", material.subMaterials, [this](const SnapshotSubMaterial& sub) {
            out_.beginObject();
            integer("id", sub.id);
            reference("material", sub.material);
            out_.endObject();
        });
        listUnlessEmpty("properties", material.properties,
                        [this](const SnapshotProperty& property) { writeProperty(property); });
        if (!sameBits(material.diffuse, Point3())) point("diffuse", material.diffuse);
        if (!sameBits(material.opacity, 0.0F)) real("opacity", material.opacity);
        if (!sameBits(material.glossiness, 0.0F)) real("glossiness", material.glossiness);
        if (const auto* number = std::get_if<float>(&material.specular)) real("specular", *number);
        if (const auto* color = std::get_if<Point3>(&material.specular)) point("specular", *color);
        listUnlessEmpty("textureMaps", material.textureMaps, [this](const SnapshotTextureMap& texture) {
            out_.beginObject();
            integer("slot", texture.slot);
            integer("map", texture.map);
            out_.endObject();
        });
        out_.endObject();
    }

    void writeProperty(const SnapshotProperty& property) {
        out_.beginObject();
        text("name", property.name);
        const auto* map = std::get_if<SnapshotMapProperty>(&property.value);
        out_.name(map ? "map" : "value");
        if (map) writeReference(map->map);
        if (const auto* number = std::get_if<float>(&property.value)) out_.real(*number);
        if (const auto* p = std::get_if<Point3>(&property.value)) writePoint(*p);
        if (const auto* p = std::get_if<host::Point4>(&property.value))
            out_.reals(std::array{p->x, p->y, p->z, p->w});
        if (const auto* utf16 = std::get_if<std::u16string>(&property.value)) out_.text(toUtf8(*utf16));
        out_.endObject();
    }

    void writeMap(const SnapshotMap& map) {
        out_.beginObject();
        text("class", map.className);
        if (!map.bitmap.empty()) text("bitmap", map.bitmap);
        listUnlessEmpty("subMaps", map.subMaps, [this](const auto& ref) { writeReference(ref); });
        out_.endObject();
    }

    DocumentWriter& out_;
};

}  // namespace

std::string writeSnapshot(const SceneSnapshot& scene, SnapshotEncoding encoding) {
    checkSnapshot(scene, "scene");
    const auto out = encoding == SnapshotEncoding::json ? makeJsonWriter() : makeCborWriter();
    SceneWriter(*out).write(scene);
    return out->take();
}

}  // namespace velinor
