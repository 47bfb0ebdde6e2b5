#include "tools/ogre/viewer_scene.h"

#include <OgreEntity.h>
#include <OgreLight.h>
#include <OgreMaterialManager.h>
#include <OgreMeshManager.h>
#include <OgreRoot.h>
#include <OgreSceneNode.h>
#include <OgreSubEntity.h>
#include <OgreSubMesh.h>

#include <map>

#include "tools/ogre/mesh_binary.h"
#include "tools/ogre/viewer_materials.h"

namespace velinor {
namespace {

struct Placement {
    Ogre::Vector3 position = Ogre::Vector3::ZERO;
    Ogre::Quaternion orientation = Ogre::Quaternion::IDENTITY;
    Ogre::Vector3 scale = Ogre::Vector3::UNIT_SCALE;
};

Ogre::Vector3 toVector(const std::array<double, 3>& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

Placement placementOf(const DescribedNode& node) {
    Placement placement;
    placement.position = toVector(node.position);
    const auto& q = node.orientation;
    placement.orientation = Ogre::Quaternion(static_cast<float>(q[0]), static_cast<float>(q[1]),
                                             static_cast<float>(q[2]), static_cast<float>(q[3]));
    placement.orientation.normalise();
    placement.scale = toVector(node.scale);
    return placement;
}

// Places in the world, for each node, as OGRE's own nodes would have them. OGRE calls itself for each level
// of depth; this does not, so a chain of any length is fine.
std::vector<Placement> worldPlacements(const SceneDescription& scene) {
    std::vector<Placement> placements;
    placements.reserve(scene.nodes.size());
    for (const DescribedNode& node : scene.nodes) {
        Placement own = placementOf(node);
        if (node.parent) {
            const Placement& parent = placements[*node.parent];
            own.position = parent.orientation * (parent.scale * own.position) + parent.position;
            own.orientation = parent.orientation * own.orientation;
            own.scale = parent.scale * own.scale;
        }
        placements.push_back(own);
    }
    return placements;
}

class SceneBuilder {
  public:
    SceneBuilder(Ogre::Root& root, const PackageFiles& package, const SceneDescription& scene,
                 const Tell& tell)
        : package_(package), tell_(tell), placements_(worldPlacements(scene)) {
        result_.manager = root.createSceneManager();
    }

    void addMesh(const DescribedMesh& mesh) {
        const Ogre::MeshPtr loaded = loadMesh(mesh.url);
        if (!loaded) return;
        Ogre::Entity* entity = result_.manager->createEntity(loaded);
        for (Ogre::SubEntity* part : entity->getSubEntities()) {
            if (!part->getSubMesh()->getMaterial()) part->setMaterialName(kClayMaterial, Ogre::RGN_DEFAULT);
        }
        addNode(mesh.node)->attachObject(entity);
        constexpr bool kDerive = true;
        result_.meshBounds.push_back(entity->getWorldBoundingBox(kDerive));
    }

    // OGRE's lights shine along their node's local -Z, and so do those of packages.
    void addLight(const DescribedLight& described) {
        Ogre::Light* light = result_.manager->createLight();
        switch (described.type) {
            case DescribedLightType::point:
                light->setType(Ogre::Light::LT_POINT);
                break;
            case DescribedLightType::spot:
                light->setType(Ogre::Light::LT_SPOTLIGHT);
                break;
            case DescribedLightType::directional:
                light->setType(Ogre::Light::LT_DIRECTIONAL);
                break;
        }
        const Ogre::Vector3 colour = toVector(described.colour);
        light->setDiffuseColour(colour.x, colour.y, colour.z);
        light->setSpecularColour(colour.x, colour.y, colour.z);
        addNode(described.node)->attachObject(light);
        result_.hasLights = true;
    }

    void addEnvironment(const EnvironmentDescription& environment) {
        const Ogre::Vector3 ambient = toVector(environment.ambient);
        result_.manager->setAmbientLight(Ogre::ColourValue(ambient.x, ambient.y, ambient.z));
        result_.hasSky =
            Ogre::MaterialManager::getSingleton().resourceExists(environment.skyMaterial, Ogre::RGN_DEFAULT);
        if (!result_.hasSky)
            tell_("where.json: the sky's material " + environment.skyMaterial + " has no script");
    }

    ViewerScene finish() { return std::move(result_); }

  private:
    Ogre::SceneNode* addNode(std::size_t described) {
        const Placement& placement = placements_[described];
        Ogre::SceneNode* node = result_.manager->getRootSceneNode()->createChildSceneNode();
        node->setPosition(placement.position);
        node->setOrientation(placement.orientation);
        node->setScale(placement.scale);
        return node;
    }

    // Null where the mesh cannot be shown. Each mesh is read, and told of, once.
    Ogre::MeshPtr loadMesh(const std::string& url) {
        const auto [known, isNew] = meshes_.try_emplace(url);
        if (!isNew) return known->second;
        const std::string file = package_.hasResource(url) ? url : fileNameOf(url);
        try {
            checkForm(file);
            known->second = Ogre::MeshManager::getSingleton().load(file, Ogre::RGN_DEFAULT);
            tellOfMaterials(file);
        } catch (const std::exception& error) {
            tell_("resources/" + file + ": " + error.what());
        }
        return known->second;
    }

    // OGRE reads past the end of a damaged mesh, or ends the program.
    void checkForm(const std::string& file) {
        const std::string bytes = package_.readResource(file);
        const MeshBinary mesh = readMeshBinary(bytes);
        const std::vector<std::string> faults = meshFaults(mesh);
        if (!faults.empty()) throw ByteFault(faults.front());
        materials_.clear();
        for (const MeshBinarySubmesh& submesh : mesh.submeshes)
            materials_.emplace_back(submesh.material);
    }

    void tellOfMaterials(const std::string& file) const {
        for (const std::string& material : materials_) {
            if (material == "default") continue;  // of meshes without a material: it never has a script
            if (Ogre::MaterialManager::getSingleton().resourceExists(material, Ogre::RGN_DEFAULT)) continue;
            std::string text = "resources/" + file;
            text.append(": the material ").append(material).append(" has no script; clay stands in");
            tell_(text);
        }
    }

    const PackageFiles& package_;
    const Tell& tell_;
    std::vector<Placement> placements_;  // one a node, in the world
    std::map<std::string, Ogre::MeshPtr> meshes_;
    std::vector<std::string> materials_;  // of the mesh that was read last
    ViewerScene result_;
};

}  // namespace

Ogre::AxisAlignedBox ViewerScene::bounds() const {
    Ogre::AxisAlignedBox all;
    for (const Ogre::AxisAlignedBox& one : meshBounds)
        all.merge(one);
    return all;
}

ViewerScene buildScene(Ogre::Root& root, const PackageFiles& package, const SceneDescription& scene,
                       const EnvironmentDescription& environment, const Tell& tell) {
    SceneBuilder builder(root, package, scene, tell);
    builder.addEnvironment(environment);
    for (const DescribedMesh& mesh : scene.meshes)
        builder.addMesh(mesh);
    for (const DescribedLight& light : scene.lights)
        builder.addLight(light);
    return builder.finish();
}

}  // namespace velinor
