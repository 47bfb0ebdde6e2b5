#include "tools/ogre/viewer_camera.h"

#include <OgreLight.h>
#include <OgreSceneNode.h>

#include <algorithm>
#include <cmath>

namespace velinor {
namespace {

constexpr float kFieldOfViewDeg = 45;

struct View {
    Ogre::Vector3 position = Ogre::Vector3::ZERO;
    Ogre::Quaternion orientation = Ogre::Quaternion::IDENTITY;  // looks along -Z, with +Y up
};

View startView(const EnvironmentDescription& environment) {
    const auto& p = environment.cameraPosition;
    const auto& q = environment.cameraOrientation;
    View view;
    view.position =
        Ogre::Vector3(static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2]));
    view.orientation = Ogre::Quaternion(static_cast<float>(q[0]), static_cast<float>(q[1]),
                                        static_cast<float>(q[2]), static_cast<float>(q[3]));
    view.orientation.normalise();  // packages have it with length √2
    return view;
}

// A three-quarter view from the front, the right and above, as close as the box allows.
View frameView(const Ogre::AxisAlignedBox& box, float aspect) {
    constexpr float kMargin = 1.06F;
    const Ogre::Vector3 back = Ogre::Vector3(0.62F, 0.42F, 1).normalisedCopy();
    const Ogre::Vector3 right = Ogre::Vector3::UNIT_Y.crossProduct(back).normalisedCopy();
    const Ogre::Vector3 up = back.crossProduct(right);
    const float tangent = std::tan(Ogre::Degree(kFieldOfViewDeg / 2).valueRadians());
    float distance = 0;
    for (const Ogre::Vector3& corner : box.getAllCorners()) {
        const Ogre::Vector3 offset = corner - box.getCenter();
        const float across = std::abs(offset.dotProduct(right)) / (tangent * aspect);
        const float along = std::abs(offset.dotProduct(up)) / tangent;
        distance = std::max(distance, std::max(across, along) * kMargin + offset.dotProduct(back));
    }
    View view;
    view.position = box.getCenter() + back * std::max(distance, 1e-3F);
    view.orientation = Ogre::Quaternion(right, up, back);
    return view;
}

// Everything from the camera to the farthest corner, and the sky beyond it.
void setDepth(Ogre::Camera& camera, const Ogre::AxisAlignedBox& box, const View& view) {
    float farthest = 1;
    if (box.isFinite()) {
        for (const Ogre::Vector3& corner : box.getAllCorners())
            farthest = std::max(farthest, corner.distance(view.position));
        if (box.getSize().length() < 1)
            farthest = std::max(box.getCenter().distance(view.position) * 2, 1e-3F);
    }
    camera.setFarClipDistance(farthest * 4);
    camera.setNearClipDistance(farthest / 2000);
}

void place(Ogre::Camera& camera, const Ogre::AxisAlignedBox& box, const View& view) {
    camera.getParentSceneNode()->setPosition(view.position);
    camera.getParentSceneNode()->setOrientation(view.orientation);
    setDepth(camera, box, view);
}

bool showsSomething(const Ogre::Camera& camera, const ViewerScene& scene) {
    return std::ranges::any_of(scene.meshBounds,
                               [&](const Ogre::AxisAlignedBox& box) { return camera.isVisible(box); });
}

}  // namespace

Ogre::Camera* addCamera(const ViewerScene& scene, const EnvironmentDescription& environment,
                        ViewChoice choice, float aspect) {
    Ogre::Camera* camera = scene.manager->createCamera("viewer");
    camera->setAspectRatio(aspect);
    camera->setFOVy(Ogre::Degree(kFieldOfViewDeg));
    scene.manager->getRootSceneNode()->createChildSceneNode()->attachObject(camera);

    const Ogre::AxisAlignedBox box = scene.bounds();
    place(*camera, box, startView(environment));
    const bool isStartUseful = !environment.hasDefaultCamera() && showsSomething(*camera, scene);
    const bool isFramed = choice == ViewChoice::frame || (choice == ViewChoice::best && !isStartUseful);
    if (isFramed && box.isFinite()) place(*camera, box, frameView(box, aspect));

    // A box with this half side has its corners within the far plane.
    if (scene.hasSky)
        scene.manager->setSkyBox(true, environment.skyMaterial, camera->getFarClipDistance() / 2);
    return camera;
}

void addCameraLights(const ViewerScene& scene, const Ogre::Camera& camera) {
    struct Lamp {
        Ogre::Vector3 direction;  // in the camera's space
        float brightness;
    };
    for (const Lamp& lamp : {Lamp{{0.5F, -0.8F, -0.7F}, 0.95F}, Lamp{{-0.9F, -0.1F, -0.5F}, 0.45F}}) {
        Ogre::Light* light = scene.manager->createLight();
        light->setType(Ogre::Light::LT_DIRECTIONAL);
        light->setDiffuseColour(lamp.brightness, lamp.brightness, lamp.brightness);
        Ogre::SceneNode* node = scene.manager->getRootSceneNode()->createChildSceneNode();
        node->setDirection(camera.getDerivedOrientation() * lamp.direction, Ogre::Node::TS_WORLD);
        node->attachObject(light);
    }
}

}  // namespace velinor
