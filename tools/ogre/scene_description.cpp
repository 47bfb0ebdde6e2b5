#include "tools/ogre/scene_description.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <span>

#include "cli/jsx_reader.h"

namespace velinor {
namespace {

constexpr std::array<std::string_view, 3> kVector{"x", "y", "z"};
constexpr std::array<std::string_view, 4> kQuaternion{"w", "x", "y", "z"};
constexpr std::array<std::string_view, 3> kColour{"r", "g", "b"};

// Makes the description out of the elements of an index.jsx, in their order.
class DescriptionBuilder {
  public:
    void take(const JsxElement& element) {
        line_ = element.line;
        open_.resize(std::min(open_.size(), element.depth));
        std::optional<std::size_t> node = open_.empty() ? std::nullopt : open_.back();
        if (element.name == "node") {
            node = addNode(element, node);
        } else if (node && element.name == "mesh") {
            scene_.meshes.push_back({*node, element.line, spreadText(element, "url: '", '\'')});
        } else if (node && element.name == "light") {
            addLight(element, *node);
        }
        open_.push_back(node);
    }

    SceneDescription finish() { return std::move(scene_); }

  private:
    [[noreturn]] void fail(const std::string& text) const {
        throw DescriptionFault("line " + std::to_string(line_) + ": " + text);
    }

    std::size_t addNode(const JsxElement& element, std::optional<std::size_t> parent) {
        DescribedNode node;
        node.parent = parent;
        readNumbers(element, "position=", kVector, node.position);
        readNumbers(element, "orientation=", kQuaternion, node.orientation);
        readNumbers(element, "scale=", kVector, node.scale);
        scene_.nodes.push_back(node);
        return scene_.nodes.size() - 1;
    }

    void addLight(const JsxElement& element, std::size_t node) {
        DescribedLight light;
        light.node = node;
        const std::string type = spreadText(element, "lighttype: \"", '"');
        if (type == "directional") light.type = DescribedLightType::directional;
        if (type == "spot") light.type = DescribedLightType::spot;
        readNumbers(element, "diffuse=", kColour, light.colour);
        scene_.lights.push_back(light);
    }

    static std::optional<std::string_view> valueOf(const JsxElement& element, std::string_view key) {
        const auto found = std::ranges::find(element.attributes, key, &JsxAttribute::key);
        if (found == element.attributes.end()) return std::nullopt;
        return found->value;
    }

    // What stands in the spread attribute after `start`, up to the last `end`.
    std::string spreadText(const JsxElement& element, std::string_view start, char end) const {
        const std::string_view value = valueOf(element, "...").value_or("");
        const std::size_t last = value.rfind(end);
        if (!value.starts_with(start) || last == std::string_view::npos || last < start.size())
            fail("the " + std::string(element.name) + " lacks " + std::string(start) + "…" + end);
        return std::string(value.substr(start.size(), last - start.size()));
    }

    // Reads "{{ x: 1.0, y: 2.0, z: 3.0 }}" into `numbers`; a missing attribute leaves them as they are.
    void readNumbers(const JsxElement& element, std::string_view key, std::span<const std::string_view> names,
                     std::span<double> numbers) const {
        std::string_view rest = valueOf(element, key).value_or("");
        if (rest.empty()) return;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::string label = (i == 0 ? "{{ " : ", ") + std::string(names[i]) + ": ";
            if (!rest.starts_with(label)) fail("\"" + label + "\" was expected in " + std::string(key));
            rest.remove_prefix(label.size());
            const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), numbers[i]);
            if (error != std::errc() || !std::isfinite(numbers[i]))
                fail(std::string(key) + " holds no finite number");
            rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        }
    }

    SceneDescription scene_;
    std::vector<std::optional<std::size_t>> open_;  // for each open element, the node that holds its children
    std::size_t line_ = 0;
};

template <std::size_t Count>
std::array<double, Count> numbersAt(const nlohmann::json& json, const char* pointer,
                                    const std::array<std::string_view, Count>& names) {
    std::array<double, Count> numbers{};
    const nlohmann::json& object = json.at(nlohmann::json::json_pointer(pointer));
    for (std::size_t i = 0; i < Count; ++i)
        numbers[i] = object.at(std::string(names[i])).get<double>();
    return numbers;
}

}  // namespace

bool EnvironmentDescription::hasDefaultCamera() const {
    return cameraPosition == std::array<double, 3>{0, 0, 0} &&
           cameraOrientation == std::array<double, 4>{1, 0, 0, 0};
}

SceneDescription readSceneDescription(std::string_view indexJsx) {
    DescriptionBuilder builder;
    const JsxFault fault = readJsx(indexJsx, [&](const JsxElement& element) { builder.take(element); });
    if (!fault.text.empty()) throw DescriptionFault("line " + std::to_string(fault.line) + ": " + fault.text);
    return builder.finish();
}

EnvironmentDescription readEnvironmentDescription(std::string_view whereJson) {
    try {
        const auto json = nlohmann::json::parse(whereJson);
        EnvironmentDescription environment;
        environment.ambient = numbersAt(json, "/environment/ambient", kColour);
        environment.skyMaterial = json.at("environment").at("skybox").at("material").get<std::string>();
        environment.cameraPosition = numbersAt(json, "/camera/position", kVector);
        environment.cameraOrientation = numbersAt(json, "/camera/orientation", kQuaternion);
        return environment;
    } catch (const nlohmann::json::exception& error) {
        throw DescriptionFault(error.what());
    }
}

std::string fileNameOf(std::string_view name) {
    std::string fileName(name);
    for (char& c : fileName) {
        const bool isKept = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                            c == '-' || c == '.';
        if (!isKept) c = '_';
    }
    return fileName;
}

}  // namespace velinor
