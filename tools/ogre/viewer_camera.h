// From where a package is looked at.
#pragma once

#include <OgreCamera.h>

#include "tools/ogre/render_options.h"
#include "tools/ogre/scene_description.h"
#include "tools/ogre/viewer_scene.h"

namespace velinor {

// Adds a camera, and the sky around it, to the scene. `aspect` is the picture's width over its height. The
// vertical field of view is 45 degrees: packages do not state one.
Ogre::Camera* addCamera(const ViewerScene& scene, const EnvironmentDescription& environment,
                        ViewChoice choice, float aspect);

// Two lights that go with the camera, for scenes without any.
void addCameraLights(const ViewerScene& scene, const Ogre::Camera& camera);

}  // namespace velinor
