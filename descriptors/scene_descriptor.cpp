#include "descriptors/scene_descriptor.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/number_format.h"
#include "base/text.h"
#include "descriptors/element_tree.h"
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

// Each value of a list of "label number" pairs between double braces, e.g. "{{ x: 1.000000, y: 2.000000 }}".
template <std::size_t Count>
std::string braced(const std::pair<const char*, float> (&values)[Count]) {
    std::string text = "{{ ";
    text.reserve(64);
    const char* separator = "";
    for (const auto& [label, value] : values) {
        text += separator;
        text += label;
        text += ": ";
        appendFixed6(text, double{value});
        separator = ", ";
    }
    text += " }}";
    return text;
}

std::string vectorText(const Point3& v) {
    return braced({{"x", v.x}, {"y", v.y}, {"z", v.z}});
}

std::string quatText(const Quat& q) {
    return braced({{"w", q.w}, {"x", q.x}, {"y", q.y}, {"z", q.z}});
}

// A colour channel of a light as the runtime takes it, 0 to 1. What is not a number counts as no light.
float channel(float value) {
    return value >= 0 || value < 0 ? std::clamp(value, 0.0F, 1.0F) : 0.0F;
}

std::string colourText(const Point3& colour, float intensity, float fraction) {
    return braced({{"r", channel(colour.x * intensity * fraction)},
                   {"g", channel(colour.y * intensity * fraction)},
                   {"b", channel(colour.z * intensity * fraction)}});
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
    GMatrix packageToParent;  // from package space to the space of these records' parent
    bool isFirst = true;
};

// Turns the record tree into elements. Only the order of writing is here; text is made by the functions
// above.
class SceneWriter {
  public:
    SceneWriter(const ExportSettings& settings, Report& report) : settings_(settings), report_(report) {}

    // Depth first over the tree below `root`. An explicit stack, since scenes can be deeper than the call
    // stack.
    void writeTree(const SceneNodeRecord& root, Progress& progress) {
        builder_.addSibling("root");
        std::vector<OpenRecord> open;
        open.push_back({root.children.begin(), root.children.end(), GMatrix().Inverse()});
        while (!open.empty()) {
            OpenRecord& level = open.back();
            if (level.next == level.end) {
                if (!level.isFirst) builder_.ascend();
                open.pop_back();
                continue;
            }
            const SceneNodeRecord& record = *level.next++;
            const GMatrix objectToPackage = toPackageTransform(record.node->GetObjectTM(), true);
            writeNode(record, objectToPackage * level.packageToParent, std::exchange(level.isFirst, false));
            progress.advance(1);
            if (!record.children.empty()) {
                open.push_back({record.children.begin(), record.children.end(), objectToPackage.Inverse()});
            }
        }
    }

    const ElementList& elements() const { return builder_.elements(); }

  private:
    void writeNode(const SceneNodeRecord& record, const GMatrix& objectToParent, bool isFirst) {
        const NodeTransform transform = decompose(objectToParent);
        if (transform.isMirrored || transform.isSingular || !objectToParent.IsFinite()) {
            reportTransform(record, transform, objectToParent.IsFinite());
        }
        switch (record.kind) {
            case SceneNodeKind::Helper:
                return addNode(record, placement(transform), isFirst);
            case SceneNodeKind::Mesh:
                return writeMesh(record, transform, isFirst);
            case SceneNodeKind::Light:
                return writeLight(record, transform, objectToParent, isFirst);
        }
    }

    static Attributes placement(const NodeTransform& transform) {
        return {{"position=", vectorText(transform.position)},
                {"orientation=", quatText(transform.orientation)},
                {"scale=", vectorText(transform.scale)}};
    }

    // Adds the record's "node" with its fixed attributes and the parameters of its name; the first of two
    // equal keys stays.
    void addNode(const SceneNodeRecord& record, Attributes attributes, bool isFirst) {
        for (std::size_t i = 0; i < record.paramKeys.size(); ++i) {
            const auto [place, isNew] =
                attributes.try_emplace(record.paramKeys[i] + "=", '"' + record.paramValues[i] + '"');
            if (!isNew) {
                report_.add(MessageId::nodeParameterRepeated, toUtf8(record.node->GetName()),
                            record.paramKeys[i]);
            }
        }
        if (isFirst) {
            builder_.addChild("node", std::move(attributes));
        } else {
            builder_.addSibling("node", std::move(attributes));
        }
    }

    void writeMesh(const SceneNodeRecord& record, const NodeTransform& transform, bool isFirst) {
        addNode(record, placement(transform), isFirst);
        const std::string name =
            record.isInstanceMaster ? nodeNameUtf8(*record.node).name : record.masterName;
        builder_.addChild(
            "mesh", {{"...", "url: '" + name + ".mesh'"},
                     {"physical=",
                      "{{ raycast: true, shapes: [ { shape: \"mesh\", mass: 1, offset: { x: 0, y: 0, z: 0 }, "
                      "rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: \"" +
                          name + ".mesh_phy.obj\" } ] }}"}});
        builder_.ascend();
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
                     transform.orientation * kLookToShine};
            light.orientation.Normalize();
        }
        node.ReleaseIGameObject();
        return light;
    }

    void writeLight(const SceneNodeRecord& record, const NodeTransform& transform,
                    const GMatrix& objectToParent, bool isFirst) {
        const Light light = lightOf(*record.node, transform, objectToParent);
        const std::string position = vectorText(transform.position);
        addNode(record, {{"position=", position}, {"orientation=", quatText(light.orientation)}}, isFirst);
        addLightElement(light, 1.0F);
        if (std::string_view(light.type) != "directional" || !settings_.helperLights) return;
        // The helper light shines the other way. The light's children come to stand in its node: the
        // runtime's scenes have always had them there.
        builder_.addSibling("node", {{"position=", position},
                                     {"orientation=", quatText(host::Conjugate(light.orientation))}});
        addLightElement(light, settings_.helperLightFraction);
    }

    void addLightElement(const Light& light, float fraction) {
        const std::string colour = colourText(light.colour, light.intensity, fraction);
        builder_.addChild("light", {{"...", std::string("lighttype: \"") + light.type + '"'},
                                    {"direction=", "{{ x: 0, y: -1, z: 0 }}"},
                                    {"diffuse=", colour},
                                    {"specular=", colour}});
        builder_.ascend();
    }

    void reportTransform(const SceneNodeRecord& record, const NodeTransform& transform, bool isFinite) {
        const std::string name = toUtf8(record.node->GetName());
        if (!isFinite) {
            report_.add(MessageId::nodeNotFinite, name);
        } else if (transform.isSingular) {
            report_.add(MessageId::nodeSingular, name, "scale " + vectorText(transform.scale));
        } else {
            report_.add(MessageId::nodeMirrored, name, "scale " + vectorText(transform.scale));
        }
    }

    const ExportSettings& settings_;
    Report& report_;
    ElementTreeBuilder builder_;
};

}  // namespace

void writeSceneDescriptor(const SceneNodeRecord& rootRecord, const ExportSettings& settings, TextSink& sink,
                          Report& report, Progress& progress) {
    SceneWriter writer(settings, report);
    writer.writeTree(rootRecord, progress);
    renderJsx(writer.elements(), 0, sink);
}

}  // namespace velinor
