#include "hosts/assimp/assimp_lights_cameras.h"

#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <vector>

#include "hosts/assimp/assimp_metadata.h"
#include "hosts/assimp/assimp_text.h"

namespace velinor {
namespace {

template <typename Device>
using Matches = std::unordered_map<const aiNode*, const Device*>;

template <typename Device>
using ByName = std::map<std::string_view, std::vector<const Device*>>;

template <typename Device>
ByName<Device> byName(std::span<Device* const> devices) {
    ByName<Device> lists;
    for (const Device* device : devices) {
        if (device != nullptr) lists[textOf(device->mName)].push_back(device);
    }
    for (auto& [name, list] : lists)
        std::ranges::reverse(list);
    return lists;
}

// An empty of FBX, which has no light or camera of its own.
bool isEmpty(const aiNode& node, FileFormat format) {
    return format == FileFormat::fbx && metadataValue<bool>(node.mMetaData, "IsNull") == true;
}

// Gives the k-th device of a name to the k-th node of that name that may have one, empties coming last; what
// stays is told.
template <typename Device>
Matches<Device> matchByName(std::span<Device* const> devices, std::span<const aiNode* const> postOrder,
                            FileFormat format, SceneLoss loss, SceneLosses& losses) {
    Matches<Device> matches;
    auto waiting = byName(devices);
    if (waiting.empty()) return matches;
    for (const bool takesEmpties : {false, true}) {
        for (const aiNode* node : postOrder) {
            if (node->mNumMeshes != 0) continue;
            const auto found = waiting.find(textOf(node->mName));
            if (found == waiting.end() || found->second.empty()) continue;
            if (isEmpty(*node, format) != takesEmpties) continue;
            matches.emplace(node, found->second.back());
            found->second.pop_back();
        }
    }
    for (const auto& [name, list] : waiting) {
        for (const Device* device : list)
            losses.add(loss, shownName(device->mName));
    }
    return matches;
}

// glTF: several nodes may use one light, which then bears the name of the last of them only, but each node
// names the light's number in the file. The library numbers lights in the order in which their first node is
// left.
std::optional<Matches<aiLight>> matchGltfLights(std::span<aiLight* const> lights,
                                                std::span<const aiNode* const> postOrder,
                                                SceneLosses& losses) {
    std::map<std::uint64_t, std::size_t> ranks;
    std::vector<std::pair<const aiNode*, std::size_t>> uses;
    for (const aiNode* node : postOrder) {
        const auto number = gltfLightOf(*node);
        if (!number) continue;
        const std::size_t rank = ranks.try_emplace(*number, ranks.size()).first->second;
        uses.emplace_back(node, rank);
    }
    if (ranks.size() != lights.size()) return std::nullopt;
    Matches<aiLight> matches;
    for (const auto& [node, rank] : uses) {
        if (lights[rank] == nullptr) continue;
        if (node->mNumMeshes == 0) {
            matches.emplace(node, lights[rank]);
        } else {
            losses.add(SceneLoss::lightBesideMesh, shownName(node->mName));
        }
    }
    return matches;
}

// The noise of a product of a colour and an intensity is no brightness.
constexpr float kBright = 1.001F;

aiColor3D finiteColour(const aiColor3D& colour) {
    const auto finite = [](float channel) { return std::isfinite(channel) ? channel : 0.0F; };
    return {finite(colour.r), finite(colour.g), finite(colour.b)};
}

// Axes of the node's own space in which a format keeps its lights and cameras, where it is not what the
// library says.
ColumnMatrix deviceToHost(const ColumnMatrix& nodeToFile, const SpaceRule& rule, FileFormat format) {
    // 3DS: positions and directions are in the space of the file whatever the node's matrix.
    return format == FileFormat::threeDs ? rule.fileToHost : rule.fileToHost * nodeToFile;
}

// 3DS has no up direction: upright, then.
aiVector3D upOf(const aiVector3D& up, FileFormat format) {
    return format == FileFormat::threeDs ? aiVector3D(0, 0, 1) : up;
}

}  // namespace

NodeDevices matchDevices(const aiScene& scene, std::span<const aiNode* const> postOrder,
                         const SourceFile& file, SceneLosses& losses) {
    NodeDevices devices;
    const std::span<aiLight* const> lights(scene.mLights, scene.mLights == nullptr ? 0 : scene.mNumLights);
    const std::span<aiCamera* const> cameras(scene.mCameras,
                                             scene.mCameras == nullptr ? 0 : scene.mNumCameras);
    std::optional<Matches<aiLight>> exact;
    if (file.format == FileFormat::gltf) exact = matchGltfLights(lights, postOrder, losses);
    devices.lights = exact ? *std::move(exact)
                           : matchByName(lights, postOrder, file.format, SceneLoss::lightWithoutNode, losses);
    devices.cameras = matchByName(cameras, postOrder, file.format, SceneLoss::cameraWithoutNode, losses);
    return devices;
}

std::optional<host::LightState> lightStateOf(const aiLight& light, std::string_view node,
                                             SceneLosses& losses) {
    host::LightState state;
    switch (light.mType) {
        case aiLightSource_DIRECTIONAL:
            state.type = host::DIRECT_LGT;
            break;
        case aiLightSource_SPOT:
            state.type = host::SPOT_LGT;
            break;
        case aiLightSource_AMBIENT:
            losses.add(SceneLoss::ambientLight, node);
            return std::nullopt;
        case aiLightSource_POINT:
            state.type = host::OMNI_LGT;
            break;
        default:  // also the area and volume lights of FBX, for which the library has no type
            losses.add(SceneLoss::volumeLight, node);
            state.type = host::OMNI_LGT;
            break;
    }
    const aiColor3D color = finiteColour(light.mColorDiffuse);
    const float brightest = std::max({color.r, color.g, color.b, 1.0F});
    if (brightest > kBright) losses.add(SceneLoss::brightLight, node);
    state.color = {color.r / brightest, color.g / brightest, color.b / brightest};
    return state;
}

host::GMatrix lightToWorld(const aiLight& light, const ColumnMatrix& nodeToFile, const SpaceRule& rule,
                           FileFormat format) {
    return viewToWorld(deviceToHost(nodeToFile, rule, format), light.mPosition, light.mDirection,
                       upOf(light.mUp, format));
}

host::GMatrix cameraToWorld(const aiCamera& camera, const ColumnMatrix& nodeToFile, const SpaceRule& rule,
                            FileFormat format) {
    // glTF cameras repeat the translation of their node.
    const aiVector3D position = format == FileFormat::gltf ? aiVector3D() : camera.mPosition;
    return viewToWorld(deviceToHost(nodeToFile, rule, format), position, camera.mLookAt,
                       upOf(camera.mUp, format));
}

}  // namespace velinor
