// The scene of a package in OGRE.
#pragma once

#include <OgreAxisAlignedBox.h>
#include <OgreSceneManager.h>

#include <vector>

#include "tools/ogre/package_files.h"
#include "tools/ogre/render_session.h"
#include "tools/ogre/scene_description.h"

namespace velinor {

struct ViewerScene {
    Ogre::SceneManager* manager = nullptr;         // Root's
    std::vector<Ogre::AxisAlignedBox> meshBounds;  // of each mesh that is shown, in world space
    bool hasLights = false;
    bool hasSky = false;

    Ogre::AxisAlignedBox bounds() const;  // of all meshes; null without any
};

// Places the meshes and lights of index.jsx, and the ambient light of where.json. The materials are loaded
// before. `tell` gets what cannot be shown.
ViewerScene buildScene(Ogre::Root& root, const PackageFiles& package, const SceneDescription& scene,
                       const EnvironmentDescription& environment, const Tell& tell);

}  // namespace velinor
