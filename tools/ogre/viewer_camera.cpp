#include "tools/ogre/viewer_camera.h"

#include <OgreLight.h>
#include <OgreSceneNode.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tools/ogre/picture.h"

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

// How far a frustum of this half-angle tangent has to stand back, and how far to the side, to hold all that
// was added.
class FrustumFit {
  public:
    explicit FrustumFit(float tangent) : tangent_(tangent) {}

    // A point `across` from the axis, and `towards` the viewer along it.
    void add(float across, float towards) {
        more_ = std::max(more_, across + tangent_ * towards);
        less_ = std::max(less_, -across + tangent_ * towards);
    }

    float across() const { return (more_ - less_) / 2; }
    float back() const { return (more_ + less_) / (2 * tangent_); }

  private:
    float tangent_;
    float more_ = -std::numeric_limits<float>::infinity();
    float less_ = -std::numeric_limits<float>::infinity();
};

// A three-quarter view from the front, the right and above, as close as the boxes of the meshes allow.
View frameView(const std::vector<Ogre::AxisAlignedBox>& boxes, float aspect) {
    constexpr float kMargin = 1.05F;
    const Ogre::Vector3 back = Ogre::Vector3(0.62F, 0.42F, 1).normalisedCopy();
    const Ogre::Vector3 right = Ogre::Vector3::UNIT_Y.crossProduct(back).normalisedCopy();
    const Ogre::Vector3 up = back.crossProduct(right);
    const float tangent = std::tan(Ogre::Degree(kFieldOfViewDeg / 2).valueRadians()) / kMargin;
    FrustumFit horizontal(tangent * aspect);
    FrustumFit vertical(tangent);
    for (const Ogre::AxisAlignedBox& box : boxes) {
        for (const Ogre::Vector3& corner : box.getAllCorners()) {
            horizontal.add(corner.dotProduct(right), corner.dotProduct(back));
            vertical.add(corner.dotProduct(up), corner.dotProduct(back));
        }
    }
    View view;
    view.position = right * horizontal.across() + up * vertical.across() +
                    back * std::max(horizontal.back(), vertical.back());
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

// Whether meshes cover at least a hundredth of what the camera sees, in a small picture without the sky.
bool showsSomething(Ogre::Camera* camera) {
    constexpr unsigned kWidth = 96;
    constexpr unsigned kHeight = 72;
    const Picture picture = drawPicture(camera, Ogre::ColourValue(1, 0, 1), kWidth, kHeight);
    unsigned covered = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); i += 3) {
        const bool isBackground =
            picture.pixels[i] == 255 && picture.pixels[i + 1] == 0 && picture.pixels[i + 2] == 255;
        covered += isBackground ? 0 : 1;
    }
    return covered >= kWidth * kHeight / 100;
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
    const auto isStartUseless = [&] { return environment.hasDefaultCamera() || !showsSomething(camera); };
    const bool isFramed = choice == ViewChoice::frame || (choice == ViewChoice::best && isStartUseless());
    if (isFramed && box.isFinite()) place(*camera, box, frameView(scene.meshBounds, aspect));

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
