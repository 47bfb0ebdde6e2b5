#include "tests/ogre/scene_content.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>

namespace velinor {
namespace {

using nlohmann::json;

std::string sanitised(std::string name) {
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '.') c = '_';
    }
    return name;
}

// The name without its list of parameters, "Chair [color: red]".
std::string cleanedName(const std::string& name) {
    const std::size_t bracket = name.rfind(" [");
    return name.ends_with(']') && bracket != std::string::npos && bracket > 0 ? name.substr(0, bracket)
                                                                              : name;
}

std::string materialName(const json& scene, const json& reference) {
    if (reference.is_null()) return "default";
    return sanitised(scene.at("materials").at(reference.get<std::size_t>()).at("name").get<std::string>());
}

// The name of the material that faces of each ID have. A material without sub-materials serves all IDs: key
// -1.
std::map<int, std::string> namesById(const json& scene, const json& node, const std::set<int>& ids) {
    const json reference = node.value("material", json());
    if (reference.is_null()) return {{-1, "default"}};
    const json& material = scene.at("materials").at(reference.get<std::size_t>());
    const json parts = material.value("subMaterials", json::array());
    if (parts.empty()) return {{-1, materialName(scene, reference)}};
    std::map<int, std::string> names;
    for (const int id : ids)
        names[id] = "default";  // an ID without a sub-material
    for (const json& part : parts) {
        const int id = part.at("id").get<int>();
        if (ids.contains(id)) names[id] = materialName(scene, part.at("material"));
    }
    return names;
}

void countTriangles(const json& scene, const json& node, const json& mesh, MeshContent& content) {
    const std::size_t faces = mesh.at("faces").size() / 3;
    std::vector<int> ids = mesh.value("materialIds", std::vector<int>());
    ids.resize(faces);
    const auto names = namesById(scene, node, {ids.begin(), ids.end()});
    for (const int id : ids)
        ++content.triangles[names.contains(-1) ? names.at(-1) : names.at(id)];
}

// Where a vertex of the host lies in the package: (x, y, z) becomes (x, z, -y), in 32 bits.
std::array<double, 3> packagePoint(const std::vector<double>& vertices, std::size_t vertex) {
    const auto at = [&](std::size_t axis) {
        return static_cast<double>(static_cast<float>(vertices.at(3 * vertex + axis)));
    };
    return {at(0), at(2), -at(1)};
}

void measure(const json& mesh, MeshContent& content) {
    const auto vertices = mesh.at("vertices").get<std::vector<double>>();
    const auto corners = mesh.at("faces").get<std::vector<std::size_t>>();
    content.min.fill(std::numeric_limits<double>::infinity());
    content.max.fill(-std::numeric_limits<double>::infinity());
    std::set<std::array<long long, 3>> places;
    for (const std::size_t corner : corners) {
        const auto point = packagePoint(vertices, corner);
        std::array<long long, 3> place{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            content.min[axis] = std::min(content.min[axis], point[axis]);
            content.max[axis] = std::max(content.max[axis], point[axis]);
            place[axis] = std::llround(point[axis] * 1e6);
        }
        places.insert(place);
    }
    content.fewestVertices = places.size();
    content.mostVertices = corners.size();
}

bool isMaster(const json& node, std::size_t number) {
    const auto instances = node.value("instances", std::vector<std::size_t>{number});
    return !instances.empty() && instances.back() == number;
}

bool isMesh(const json& node) {
    const json object = node.value("object", json());
    return object.is_object() && object.at("type") == "mesh" && object.contains("mesh");
}

}  // namespace

SceneContent readSceneContent(const std::filesystem::path& snapshot) {
    const json scene = json::parse(std::ifstream(snapshot));
    SceneContent content;
    for (std::size_t i = 0; i < scene.at("nodes").size(); ++i) {
        const json& node = scene.at("nodes").at(i);
        if (!isMesh(node) || !isMaster(node, i)) continue;
        const json& mesh = scene.at("meshes").at(node.at("object").at("mesh").get<std::size_t>());
        MeshContent expected;
        countTriangles(scene, node, mesh, expected);
        measure(mesh, expected);
        content[sanitised(cleanedName(node.at("name").get<std::string>())) + ".mesh"].push_back(expected);
    }
    return content;
}

}  // namespace velinor
