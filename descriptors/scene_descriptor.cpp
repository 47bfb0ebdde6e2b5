#include "descriptors/scene_descriptor.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <span>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/number_format.h"
#include "base/text.h"
#include "descriptors/jsx_text.h"
#include "descriptors/sun_positioner.h"
#include "host/object.h"
#include "scene/node_name.h"
#include "scene/transform.h"

namespace velinor {
namespace {

using host::GMatrix;
using host::Point3;
using host::Quat;

// A text between double braces, e.g. "{{ x: 1.000000, y: 2.000000 }}". Made anew for each attribute, in one
// place: a text stays valid until the next one of the same writer.
class BracedText {
  public:
    std::string_view vector(const Point3& v) { return of({{"x: ", v.x}, {", y: ", v.y}, {", z: ", v.z}}); }

    std::string_view quaternion(const Quat& q) {
        return of({{"w: ", q.w}, {", x: ", q.x}, {", y: ", q.y}, {", z: ", q.z}});
    }

    std::string_view colour(const Point3& c) { return of({{"r: ", c.x}, {", g: ", c.y}, {", b: ", c.z}}); }

  private:
    std::string_view of(std::initializer_list<std::pair<std::string_view, float>> values) {
        text_ = "{{ ";
        for (const auto& [label, value] : values) {
            text_ += label;
            appendFixed6(text_, double{value});
        }
        return text_ += " }}";
    }

    std::string text_;
};

// A colour channel of a light as the runtime takes it, 0 to 1. What is not a number counts as no light.
float channel(float value) {
    return value > 0 ? std::min(value, 1.0F) : 0.0F;
}

// "scale -1, 1, 2": for the report.
std::string scaleForPeople(const Point3& scale) {
    std::ostringstream text;
    text << "scale " << scale.x << ", " << scale.y << ", " << scale.z;
    return text.str();
}

const char* lightTypeName(std::int32_t type) {
    switch (type) {
        case host::SPOT_LGT:
            return "spot";
        case host::DIRECT_LGT:
        case host::AMBIENT_LGT:
            return "directional";
        default:
            return "point";
    }
}

// A node whose children are being written.
struct OpenRecord {
    StableList<SceneNodeRecord>::const_iterator next;
    StableList<SceneNodeRecord>::const_iterator end;
    GMatrix packageToParent;    // from package space to the space of these records' parent
    bool isParentFlat = false;  // whether that space has lost a dimension
    bool isFirst = true;
};

// A node's attributes in the order in which they count: of equal keys the first one is written.
class NodeAttributes {
  public:
    // `key` and `value` must outlive the list; fixed attributes come in ascending order.
    void addFixed(std::string_view key, std::string_view value) { attributes_.push_back({key, value}); }

    // Adds the parameters of a node's name. The number of those that are not written, for their key is taken.
    std::size_t addParameters(const SceneNodeRecord& record) {
        const std::size_t count = record.paramKeys.size();
        if (count == 0) return 0;
        texts_.reserve(2 * count);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string& key = texts_.emplace_back(record.paramKeys[i] + "=");
            attributes_.push_back({key, texts_.emplace_back('"' + record.paramValues[i] + '"')});
        }
        std::ranges::stable_sort(attributes_, {}, &JsxAttribute::key);
        const auto repeated =
            std::unique(attributes_.begin(), attributes_.end(),
                        [](const JsxAttribute& a, const JsxAttribute& b) { return a.key == b.key; });
        const auto left = static_cast<std::size_t>(attributes_.end() - repeated);
        attributes_.erase(repeated, attributes_.end());
        return left;
    }

    void clear() {
        attributes_.clear();
        texts_.clear();
    }

    std::span<const JsxAttribute> view() const { return attributes_; }

  private:
    std::vector<JsxAttribute> attributes_;
    std::vector<std::string> texts_;  // what the parameters' keys and values point at
};

// Writes the record tree as elements. What an element looks like is above; here is their order.
class SceneWriter {
  public:
    SceneWriter(const ExportSettings& settings, TextSink& sink, Report& report)
        : settings_(settings), report_(report), jsx_(sink, 0) {}

    // Depth first over the tree below `root`. An explicit stack, since scenes can be deeper than the call
    // stack.
    void writeTree(const SceneNodeRecord& root, Progress& progress) {
        jsx_.addSibling("root");
        std::vector<OpenRecord> open;
        open.push_back({root.children.begin(), root.children.end(), GMatrix().Inverse(), false});
        while (!open.empty()) {
            OpenRecord& level = open.back();
            if (level.next == level.end) {
                if (!level.isFirst) jsx_.ascend();
                open.pop_back();
                continue;
            }
            const SceneNodeRecord& record = *level.next++;
            const GMatrix objectToPackage = toPackageTransform(record.node->GetObjectTM(), true);
            const GMatrix objectToParent = objectToPackage * level.packageToParent;
            const NodeTransform transform = decompose(objectToParent);
            reportTransform(record, transform, objectToParent.IsFinite(), level.isParentFlat);
            reportLights(record);
            writeNode(record, transform, objectToParent, std::exchange(level.isFirst, false));
            progress.advance(1);
            if (!record.children.empty()) {
                open.push_back({record.children.begin(), record.children.end(), objectToPackage.Inverse(),
                                level.isParentFlat || transform.isSingular});
            }
        }
        jsx_.finish();
    }

  private:
    void writeNode(const SceneNodeRecord& record, const NodeTransform& transform,
                   const GMatrix& objectToParent, bool isFirst) {
        if (record.kind == SceneNodeKind::Light)
            return writeLight(record, transform, objectToParent, isFirst);
        attributes_.clear();
        attributes_.addFixed("orientation=", orientation_.quaternion(transform.orientation));
        attributes_.addFixed("position=", position_.vector(transform.position));
        attributes_.addFixed("scale=", scale_.vector(transform.scale));
        addNode(record, isFirst);
        if (record.kind == SceneNodeKind::Mesh) addMeshElement(record);
    }

    // Adds the record's "node" with the fixed attributes and the parameters of its name.
    void addNode(const SceneNodeRecord& record, bool isFirst) {
        const std::size_t left = attributes_.addParameters(record);
        if (left > 0) {
            report_.add(MessageId::nodeParameterRepeated, toUtf8(record.node->GetName()),
                        std::to_string(left) + " of " + std::to_string(record.paramKeys.size()));
        }
        if (isFirst) {
            jsx_.addChild("node", attributes_.view());
        } else {
            jsx_.addSibling("node", attributes_.view());
        }
    }

    void addMeshElement(const SceneNodeRecord& record) {
        const std::string name =
            record.isInstanceMaster ? nodeNameUtf8(*record.node).name : record.masterName;
        const std::string url = "url: '" + name + ".mesh'";
        const std::string shapes =
            "{{ raycast: true, shapes: [ { shape: \"mesh\", mass: 1, offset: { x: 0, y: 0, z: 0 }, rotation: "
            "{ w: 1, "
            "x: 0, y: 0, z: 0 }, mesh: \"" +
            name + ".mesh_phy.obj\" } ] }}";
        addLeaf("mesh", {{"...", url}, {"physical=", shapes}});
    }

    // Adds the one element of its own that a "node" holds.
    void addLeaf(std::string_view name, std::initializer_list<JsxAttribute> attributes) {
        jsx_.addChild(name, {attributes.begin(), attributes.size()});
        jsx_.ascend();
    }

    // What a light's elements are written from.
    struct Light {
        const char* type;
        Point3 colour;
        float intensity;
        Quat orientation;
    };

    static Light lightOf(host::IGameNode& node, const NodeTransform& transform,
                         const GMatrix& objectToParent) {
        host::IGameObject& object = *node.GetIGameObject();
        Light light{};
        if (isSunPositioner(*object.GetMaxObject())) {
            const GMatrix rotation = host::RotationMatrixFromQuat(objectToParent.Rotation());
            light = {"directional", {1, 1, 1}, 1, sunPositionerOrientation(object, rotation)};
        } else {
            constexpr host::TimeValue kStart = 0;
            const auto state = static_cast<host::LightObject*>(object.GetMaxObject())->EvalLightState(kStart);
            light = {lightTypeName(state.type), state.color, state.intens,
                     transform.orientation * kLookAlongMinusZ};
            light.orientation.Normalize();
        }
        node.ReleaseIGameObject();
        return light;
    }

    // Writes the light, and its helper light where there is one.
    void writeLight(const SceneNodeRecord& record, const NodeTransform& transform,
                    const GMatrix& objectToParent, bool isFirst) {
        const Light light = lightOf(*record.node, transform, objectToParent);
        attributes_.clear();
        attributes_.addFixed("orientation=", orientation_.quaternion(light.orientation));
        attributes_.addFixed("position=", position_.vector(transform.position));
        addNode(record, isFirst);
        addLightElement(light, 1.0F);
        if (std::string_view(light.type) != "directional" || !settings_.helperLights) return;
        // The helper light shines the other way. The light's children come to stand in its node: the
        // runtime's scenes have always had them there.
        attributes_.clear();
        attributes_.addFixed("orientation=", orientation_.quaternion(host::Conjugate(light.orientation)));
        attributes_.addFixed("position=", position_.vector(transform.position));
        jsx_.addSibling("node", attributes_.view());
        addLightElement(light, settings_.helperLightFraction);
    }

    void addLightElement(const Light& light, float fraction) {
        const auto scaled = [&](float value) { return channel(value * light.intensity * fraction); };
        const std::string type = std::string("lighttype: \"") + light.type + '"';
        BracedText text;
        const std::string_view colour =
            text.colour({scaled(light.colour.x), scaled(light.colour.y), scaled(light.colour.z)});
        addLeaf("light", {{"...", type},
                          {"diffuse=", colour},
                          {"direction=", "{{ x: 0, y: -1, z: 0 }}"},
                          {"specular=", colour}});
    }

    // Below a flat node everything is flat, which is that node's fault alone.
    void reportTransform(const SceneNodeRecord& record, const NodeTransform& transform, bool isFinite,
                         bool isParentFlat) {
        if (!isFinite) {
            report_.add(MessageId::nodeNotFinite, toUtf8(record.node->GetName()));
        } else if (transform.isSingular && !isParentFlat) {
            report_.add(MessageId::nodeSingular, toUtf8(record.node->GetName()),
                        scaleForPeople(transform.scale));
        } else if (transform.isMirrored) {
            report_.add(MessageId::nodeMirrored, toUtf8(record.node->GetName()),
                        scaleForPeople(transform.scale));
        }
    }

    // What viewers other than the runtime do differently.
    void reportLights(const SceneNodeRecord& record) {
        if (record.kind == SceneNodeKind::Light && !std::exchange(isLightDirectionTold_, true))
            report_.add(MessageId::lightDirection, "index.jsx");
        if (record.parent != nullptr && record.parent->kind == SceneNodeKind::Light)
            report_.add(MessageId::nodeBelowLight, toUtf8(record.node->GetName()));
    }

    const ExportSettings& settings_;
    Report& report_;
    bool isLightDirectionTold_ = false;
    JsxWriter jsx_;
    NodeAttributes attributes_;
    BracedText position_;
    BracedText orientation_;
    BracedText scale_;
};

}  // namespace

void writeSceneDescriptor(const SceneNodeRecord& rootRecord, const ExportSettings& settings, TextSink& sink,
                          Report& report, Progress& progress) {
    SceneWriter(settings, sink, report).writeTree(rootRecord, progress);
}

}  // namespace velinor
