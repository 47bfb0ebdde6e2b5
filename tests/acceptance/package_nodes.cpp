#include "tests/acceptance/package_nodes.h"

#include <cstdlib>
#include <map>
#include <stdexcept>

#include "cli/jsx_reader.h"
#include "tests/acceptance/scene_reading.h"

namespace velinor {
namespace {

// "{{ x: 1.000000, y: 2.000000 }}" as numbers by their letters.
std::map<char, double> lettersOf(std::string_view value) {
    std::map<char, double> numbers;
    for (std::size_t colon = value.find(": "); colon != std::string_view::npos;
         colon = value.find(": ", colon + 1)) {
        numbers[value.at(colon - 1)] = std::strtod(std::string(value.substr(colon + 2)).c_str(), nullptr);
    }
    return numbers;
}

PackagePoint pointOf(std::string_view value) {
    auto numbers = lettersOf(value);
    return {numbers.at('x'), numbers.at('y'), numbers.at('z')};
}

// The axes that the unit vectors become.
std::array<PackagePoint, 3> turned(std::string_view value) {
    auto q = lettersOf(value);
    const double w = q.at('w');
    const double x = q.at('x');
    const double y = q.at('y');
    const double z = q.at('z');
    return {PackagePoint{1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y)},
            PackagePoint{2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x)},
            PackagePoint{2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y)}};
}

PackagePlacement placementOf(const JsxElement& element) {
    PackagePlacement placement;
    PackagePoint scale{1, 1, 1};
    for (const JsxAttribute& attribute : element.attributes) {
        if (attribute.key == "position=") placement.position = pointOf(attribute.value);
        if (attribute.key == "orientation=") placement.axes = turned(attribute.value);
        if (attribute.key == "scale=") scale = pointOf(attribute.value);
    }
    for (std::size_t row = 0; row < 3; ++row) {
        for (double& entry : placement.axes[row])
            entry *= scale[row];
    }
    return placement;
}

PackagePlacement below(const PackagePlacement& local, const PackagePlacement& parent) {
    PackagePlacement world;
    const PackagePoint origin = parent.position;
    for (std::size_t row = 0; row < 3; ++row) {
        const PackagePoint end = parent.pointOf(local.axes[row]);
        world.axes[row] = {end[0] - origin[0], end[1] - origin[1], end[2] - origin[2]};
    }
    world.position = parent.pointOf(local.position);
    return world;
}

// What stands between the quotes of "url: 'Chair.mesh'" or 'lighttype: "point"'.
std::string quotedIn(std::string_view value) {
    const std::size_t start = value.find_first_of("'\"");
    const std::size_t end = start == std::string_view::npos ? start : value.find(value[start], start + 1);
    if (end == std::string_view::npos) return {};
    return std::string(value.substr(start + 1, end - start - 1));
}

std::string spreadOf(const JsxElement& element) {
    for (const JsxAttribute& attribute : element.attributes) {
        if (attribute.key == "...") return quotedIn(attribute.value);
    }
    return {};
}

// Gathers nodes from the elements of a file, in their order.
class NodeCollector {
  public:
    void take(const JsxElement& element) {
        if (element.name == "node") addNode(element);
        if (element.name == "mesh") nodes.back().mesh = spreadOf(element);
        if (element.name == "light") addLight(element);
    }

    std::vector<PackageNode> nodes;

  private:
    void addNode(const JsxElement& element) {
        PackageNode node;
        node.local = placementOf(element);
        above_.resize(element.depth);
        node.world = below(node.local, above_.back());
        above_.push_back(node.world);
        nodes.push_back(node);
    }

    void addLight(const JsxElement& element) {
        PackageNode& node = nodes.back();
        node.light = spreadOf(element);
        if (node.light != "directional") return;
        const bool followsOne = nodes.size() > 1 && nodes[nodes.size() - 2].light == node.light;
        node.isHelperLight = followsOne && !nodes[nodes.size() - 2].isHelperLight &&
                             nodes[nodes.size() - 2].local.position == node.local.position;
    }

    std::vector<PackagePlacement> above_{1};  // of the elements around, the root first
};

}  // namespace

PackagePoint PackagePlacement::pointOf(const PackagePoint& point) const {
    PackagePoint result = position;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            result[column] += point[row] * axes[row][column];
    }
    return result;
}

std::vector<PackageNode> readPackageNodes(const std::filesystem::path& indexJsx) {
    const std::string text = bytesOf(indexJsx);
    NodeCollector collector;
    const JsxFault fault = readJsx(text, [&](const JsxElement& element) { collector.take(element); });
    if (fault.line != 0)
        throw std::runtime_error("index.jsx: line " + std::to_string(fault.line) + ": " + fault.text);
    return collector.nodes;
}

}  // namespace velinor
