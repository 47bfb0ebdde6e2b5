// What the meshes of a package have to hold, computed from the scene and without the exporter.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace velinor {

struct MeshContent {
    std::map<std::string, std::uint64_t> triangles;  // by material name as scripts have it
    std::array<double, 3> min{};                     // package space
    std::array<double, 3> max{};
    std::uint64_t fewestVertices = 0;  // one for each place that differs in six decimals
    std::uint64_t mostVertices = 0;    // one for each corner
};

// By mesh file name. Several nodes can have one name; the file is that of one of them.
using SceneContent = std::map<std::string, std::vector<MeshContent>>;

// The mesh nodes of a scene snapshot in JSON that are masters of their instances. Hidden ones count, too.
SceneContent readSceneContent(const std::filesystem::path& snapshot);

}  // namespace velinor
