#include "cli/package_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>

#include "base/text.h"
#include "cli/command_error.h"
#include "cli/jsx_reader.h"
#include "cli/resource_check.h"
#include "cli/scene_source.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The text between `start` and the last `end` after it.
std::optional<std::string_view> between(std::string_view text, std::string_view start, std::string_view end) {
    const std::size_t first = text.find(start);
    if (first == std::string_view::npos) return std::nullopt;
    const std::size_t begin = first + start.size();
    const std::size_t last = text.rfind(end);
    if (last == std::string_view::npos || last < begin) return std::nullopt;
    return text.substr(begin, last - begin);
}

// Whether `value` is "{{ x: NUMBER, y: NUMBER }}" with those names and finite numbers.
bool isNumbers(std::string_view value, std::span<const std::string_view> names) {
    if (!value.starts_with("{{ ") || !value.ends_with(" }}")) return false;
    value = value.substr(3, value.size() < 6 ? 0 : value.size() - 6);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0 && !value.starts_with(", ")) return false;
        value.remove_prefix(i > 0 ? 2 : 0);
        if (!value.starts_with(names[i]) || !value.substr(names[i].size()).starts_with(": ")) return false;
        value.remove_prefix(names[i].size() + 2);
        double number = 0;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
        if (error != std::errc() || !std::isfinite(number)) return false;
        value.remove_prefix(static_cast<std::size_t>(end - value.data()));
    }
    return value.empty();
}

constexpr std::array<std::string_view, 3> kVector{"x", "y", "z"};
constexpr std::array<std::string_view, 4> kQuaternion{"w", "x", "y", "z"};
constexpr std::array<std::string_view, 3> kColour{"r", "g", "b"};

struct NumbersAttribute {
    std::string_view element;
    std::string_view key;
    std::span<const std::string_view> names;
    bool isRequired;
};

constexpr auto kNumbersAttributes = std::to_array<NumbersAttribute>({
    {"node", "orientation=", kQuaternion, true},
    {"node", "position=", kVector, true},
    {"node", "scale=", kVector, false},  // nodes of lights have none
    {"light", "diffuse=", kColour, true},
    {"light", "direction=", kVector, true},
    {"light", "specular=", kColour, true},
});

const JsxAttribute* findAttribute(const JsxElement& element, std::string_view key) {
    const auto found = std::ranges::find(element.attributes, key, &JsxAttribute::key);
    return found == element.attributes.end() ? nullptr : &*found;
}

// Checks the elements of one index.jsx.
class SceneDescriptorCheck {
  public:
    SceneDescriptorCheck(const fs::path& resources, PackageFindings& findings)
        : resources_(resources, findings), faults_(findings.faults) {}

    void check(const JsxElement& element) {
        checkPlace(element);
        for (const NumbersAttribute& attribute : kNumbersAttributes) {
            if (attribute.element == element.name) checkNumbers(element, attribute);
        }
        if (element.name == "mesh") checkMesh(element);
        if (element.name == "light" && !lightType(element)) add(element, "the light has no known lighttype");
    }

    // After the last element.
    void finish() { resources_.finish(); }

    void add(std::size_t line, const std::string& text) {
        faults_.push_back({"index.jsx", "line " + std::to_string(line) + ": " + text});
    }

  private:
    void add(const JsxElement& element, const std::string& text) { add(element.line, text); }

    void checkPlace(const JsxElement& element) {
        const std::string_view name = element.name;
        const bool isKnown = element.depth == 0 ? name == "root"
                                                : name == "node" || ((name == "mesh" || name == "light") &&
                                                                     element.parent == "node");
        if (!isKnown) add(element, "an element \"" + std::string(name) + "\" has no place here");
    }

    void checkNumbers(const JsxElement& element, const NumbersAttribute& expected) {
        const JsxAttribute* attribute = findAttribute(element, expected.key);
        const std::string key(expected.key.substr(0, expected.key.size() - 1));
        if (attribute == nullptr) {
            if (expected.isRequired) add(element, "the " + std::string(element.name) + " has no " + key);
        } else if (!isNumbers(attribute->value, expected.names)) {
            add(element,
                key + " is " + std::string(attribute->value.substr(0, 200)) + ", not finite numbers");
        }
    }

    static bool lightType(const JsxElement& element) {
        const JsxAttribute* attribute = findAttribute(element, "...");
        if (attribute == nullptr) return false;
        const auto type = between(attribute->value, "lighttype: \"", "\"");
        return type == "point" || type == "spot" || type == "directional";
    }

    void checkMesh(const JsxElement& element) {
        const JsxAttribute* spread = findAttribute(element, "...");
        const JsxAttribute* physical = findAttribute(element, "physical=");
        const auto url = spread == nullptr ? std::nullopt : between(spread->value, "url: '", "'");
        const auto shape =
            physical == nullptr ? std::nullopt : between(physical->value, ", mesh: \"", "\" } ] }}");
        if (url) {
            resources_.checkMesh(element.line, *url);
        } else {
            add(element, "the mesh's url names no file");
        }
        if (shape) {
            resources_.checkCollisionMesh(element.line, *shape);
        } else {
            add(element, "the mesh's physical names no file");
        }
    }

    ResourceCheck resources_;
    std::vector<PackageFault>& faults_;
};

void checkIndexJsx(const fs::path& folder, const std::string& text, PackageFindings& findings) {
    SceneDescriptorCheck check(folder / "resources", findings);
    const JsxFault fault = readJsx(text, [&](const JsxElement& element) { check.check(element); });
    if (fault.line > 0 || !fault.text.empty()) check.add(fault.line, fault.text);
    check.finish();
}

// The content of a descriptor; nothing, and a fault, where it cannot be read.
std::optional<std::string> readDescriptor(const fs::path& folder, const char* file,
                                          std::vector<PackageFault>& faults) {
    try {
        return readSceneFile(folder / file);
    } catch (const CommandError& error) {
        const std::string prefix = utf8Path(folder / file) + ": ";
        const std::string_view text = error.what();
        faults.push_back({file, std::string(text.starts_with(prefix) ? text.substr(prefix.size()) : text)});
        return std::nullopt;
    }
}

void append(std::vector<PackageFault>& faults, std::vector<PackageFault>&& more) {
    faults.insert(faults.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

}  // namespace

bool isPlainFileName(std::string_view name) {
    return !name.empty() && name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

PackageFindings checkPackage(const fs::path& folder) {
    PackageFindings findings;
    std::vector<PackageFault>& faults = findings.faults;
    if (const auto text = readDescriptor(folder, "index.jsx", faults)) checkIndexJsx(folder, *text, findings);
    if (const auto text = readDescriptor(folder, "where.json", faults)) append(faults, checkWhereJson(*text));
    if (const auto text = readDescriptor(folder, "webtables.json", faults))
        append(faults, checkWebtablesJson(*text));
    return findings;
}

}  // namespace velinor
