// render_package: draws a package into a picture. docs/ogre.md tells more.
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "tools/ogre/package_files.h"
#include "tools/ogre/picture.h"
#include "tools/ogre/render_options.h"
#include "tools/ogre/render_session.h"
#include "tools/ogre/scene_description.h"
#include "tools/ogre/viewer_camera.h"
#include "tools/ogre/viewer_materials.h"
#include "tools/ogre/viewer_scene.h"

namespace velinor {
namespace {

// Where there is no sky.
const Ogre::ColourValue kBackground(0.2F, 0.22F, 0.25F);

enum ExitStatus : int { kDrawn = 0, kDrawnInPart = 1, kNotDrawn = 2 };

void draw(const RenderOptions& options, const PackageFiles& package, const Tell& tell) {
    const SceneDescription description = readSceneDescription(package.read("index.jsx"));
    const EnvironmentDescription environment = readEnvironmentDescription(package.read("where.json"));
    RenderSession session(tell);
    try {
        loadMaterials(package, options.programs, tell);
        const ViewerScene scene = buildScene(session.root(), package, description, environment, tell);
        const float aspect = static_cast<float>(options.width) / static_cast<float>(options.height);
        Ogre::Camera* camera = addCamera(scene, environment, options.view, aspect);
        if (!scene.hasLights) addCameraLights(scene, *camera);
        const unsigned factor = options.oversampling;
        const Picture picture =
            drawPicture(camera, kBackground, options.width * factor, options.height * factor);
        savePicture(shrink(picture, factor), options.picture);
    } catch (const Ogre::Exception& error) {
        // The text is copied while the session lives: it can point into a plug-in that is about to be
        // unloaded.
        throw PackageError(error.getDescription());
    }
}

int render(const RenderOptions& options) {
    bool isWhole = true;
    const Tell tell = [&](const std::string& text) {
        isWhole = false;
        std::cerr << "render_package: " << text << "\n";
    };
    draw(options, PackageFiles(options.package), tell);
    return isWhole ? kDrawn : kDrawnInPart;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"--help"}) {
        std::cout << kRenderUsage;
        return kDrawn;
    }
    try {
        return render(parseRenderOptions(arguments));
    } catch (const ArgumentError& error) {
        std::cerr << "render_package: " << error.what() << "\n" << kRenderUsage;
    } catch (const std::exception& error) {
        std::cerr << "render_package: " << error.what() << "\n";
    }
    return kNotDrawn;
}

}  // namespace
}  // namespace velinor

int main(int argc, char** argv) {
    return velinor::run(std::vector<std::string>(argv + 1, argv + argc));
}
