// What index.jsx and where.json say of a scene, as plain data.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// Package space, scene units. The placement is relative to the node around it.
struct DescribedNode {
    std::optional<std::size_t> parent;  // which of the nodes; it comes before its children
    std::array<double, 3> position{0, 0, 0};
    std::array<double, 4> orientation{1, 0, 0, 0};  // w, x, y, z
    std::array<double, 3> scale{1, 1, 1};
};

struct DescribedMesh {
    std::size_t node = 0;
    std::size_t line = 0;  // of index.jsx, from 1
    std::string url;       // the file's name as index.jsx has it, "Chair.mesh"; not sanitised
};

enum class DescribedLightType { point, spot, directional };

// The written direction is left out: it is the same for all lights. They shine along their node's local -Z.
struct DescribedLight {
    std::size_t node = 0;
    DescribedLightType type = DescribedLightType::point;
    std::array<double, 3> colour{1, 1, 1};
};

struct SceneDescription {
    std::vector<DescribedNode> nodes;
    std::vector<DescribedMesh> meshes;
    std::vector<DescribedLight> lights;
};

struct EnvironmentDescription {
    std::array<double, 3> ambient{0, 0, 0};
    std::string skyMaterial;
    std::array<double, 3> cameraPosition{0, 0, 0};
    std::array<double, 4> cameraOrientation{1, 0, 0, 0};  // w, x, y, z; of any length

    // Whether the camera stands where packages without a camera have it: at the origin and unturned.
    bool hasDefaultCamera() const;
};

// Something in a descriptor that cannot be understood. what() has the place and no file name.
class DescriptionFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads the text of an index.jsx or a where.json. Throws DescriptionFault.
SceneDescription readSceneDescription(std::string_view indexJsx);
EnvironmentDescription readEnvironmentDescription(std::string_view whereJson);

// The name that a file of the resources has: every byte of `name` other than an ASCII letter, a digit, "-" or
// "." is "_" there.
std::string fileNameOf(std::string_view name);

}  // namespace velinor
