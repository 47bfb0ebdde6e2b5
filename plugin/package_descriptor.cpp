#include "plugin/package_descriptor.h"

#include <nlohmann/json.hpp>

#include "scene/transform.h"

namespace velinor {
namespace {

using host::GMatrix;
using host::Point3;
using host::Quat;
using nlohmann::json;

json vectorJson(const Point3& v) {
    return {{"x", v.x}, {"y", v.y}, {"z", v.z}};
}

json quatJson(const Quat& q) {
    return {{"w", q.w}, {"x", q.x}, {"y", q.y}, {"z", q.z}};
}

// The start camera's placement. The orientation keeps the length sqrt(2) of the constant factor: the runtime
// reads it so.
json cameraPlacement(const host::IGameNode& camera) {
    const GMatrix objectToPackage = toPackageTransform(camera.GetObjectTM(), true);
    return {{"orientation", quatJson(packageOrientation(objectToPackage) * kLookAlongMinusZ)},
            {"position", vectorJson(objectToPackage.Translation())}};
}

json defaultPlacement() {
    return {{"orientation", quatJson(Quat{0, 0, 0, 1})}, {"position", vectorJson(Point3{})}};
}

// The box in which the camera may move. Only the position of the node counts, not its rotation and scale.
// Z-up becomes Y-up, and since y changes its sign, the corners trade it.
json cameraLimits(host::IGameNode& boundsNode) {
    constexpr host::TimeValue kStart = 0;
    const Point3 t = boundsNode.GetObjectTM().Translation();
    const host::Box3 box = boundsNode.GetIGameObject()->GetMaxObject()->GetDeformBBox(kStart);
    boundsNode.ReleaseIGameObject();
    return {{"max", vectorJson({box.pmax.x + t.x, box.pmax.z + t.z, -(box.pmin.y + t.y)})},
            {"min", vectorJson({box.pmin.x + t.x, box.pmin.z + t.z, -(box.pmax.y + t.y)})}};
}

json cameraJson(const ExportSettings& settings, const CollectedScene& scene) {
    const bool hasCamera = settings.exportCamera && !scene.cameraNodes.empty();
    json camera = hasCamera ? cameraPlacement(*scene.cameraNodes.front()) : defaultPlacement();
    if (!scene.cameraBoundsNodes.empty()) camera["limits"] = cameraLimits(*scene.cameraBoundsNodes.front());
    return camera;
}

json colourJson(const ExportSettings& settings) {
    return {{"a", 1}, {"b", settings.ambientBlue}, {"g", settings.ambientGreen}, {"r", settings.ambientRed}};
}

}  // namespace

std::string BuildPackageDescriptor(const ExportSettings& settings, const CollectedScene& scene) {
    // "false" and "[]" as strings, and the spelling of "affliliation", are what the package's readers expect.
    const json descriptor = {
        {"camera", cameraJson(settings, scene)},
        {"deploy-name", "test"},
        {"description", {{"full", ""}, {"short", ""}}},
        {"environment",
         {{"ambient", colourJson(settings)},
          {"background", colourJson(settings)},
          {"skybox", {{"material", "FXUnlitSkyboxCubic"}}}}},
        {"isPrivate", "false"},
        {"isPublic", "false"},
        {"local", "./resources"},
        {"main", "index.jsx"},
        {"mainTag", ""},
        {"meta", {{"affliliation", ""}, {"creator", ""}}},
        {"name", ""},
        {"price", 0},
        {"tags", "[]"},
        {"thumbnails", "[]"},
        {"version", 0},
    };
    return descriptor.dump(4);
}

}  // namespace velinor
