#include "tools/ogre/reference_check.h"

#include <set>

#include "tools/ogre/scene_description.h"

namespace velinor {
namespace {

// The material of meshes that have none in the scene. No script is written for it.
constexpr const char* kNoMaterial = "default";

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

void checkMeshReference(const PackageFiles& package, const DescribedMesh& mesh, CheckReport& report) {
    const std::string file = "index.jsx";
    const std::string place = "line " + std::to_string(mesh.line) + ": ";
    if (package.hasResource(mesh.url)) return;
    const std::string onDisk = fileNameOf(mesh.url);
    if (package.hasResource(onDisk)) {
        report.note(file, place + quoted(mesh.url) + " stands for the file " + onDisk);
    } else {
        report.fault(file, place + "the mesh " + quoted(mesh.url) + " is not in the package");
    }
}

void checkSceneReferences(const PackageFiles& package, CheckReport& report) {
    try {
        std::set<std::string> told;
        const SceneDescription scene = readSceneDescription(package.read("index.jsx"));
        for (const DescribedMesh& mesh : scene.meshes) {
            if (told.insert(mesh.url).second) checkMeshReference(package, mesh, report);
        }
    } catch (const DescriptionFault& fault) {
        report.fault("index.jsx", fault.what());
    }
}

void checkSky(const PackageFiles& package, const ScriptContent& scripts, CheckReport& report) {
    try {
        const EnvironmentDescription environment = readEnvironmentDescription(package.read("where.json"));
        if (!scripts.materials.contains(environment.skyMaterial))
            report.fault("where.json",
                         "the sky's material " + quoted(environment.skyMaterial) + " has no script");
    } catch (const DescriptionFault& fault) {
        report.fault("where.json", fault.what());
    }
}

void checkMaterial(const PackageFiles& package, const std::string& file, const std::string& material,
                   CheckReport& report) {
    if (material == kNoMaterial) {
        report.note(file, "the material \"default\" has no script: the mesh has no material in the scene");
    } else if (package.hasResource(material + ".material_properties")) {
        report.note(file, "the material " + quoted(material) +
                              " has no script: it is of a class that is only listed, in " + material +
                              ".material_properties");
    } else {
        report.fault(file, "the material " + quoted(material) + " has no script in the package");
    }
}

void checkMaterials(const PackageFiles& package, const ScriptContent& scripts, CheckReport& report) {
    for (const auto& [name, mesh] : report.meshes) {
        for (const SubmeshSummary& submesh : mesh.submeshes) {
            if (submesh.material.empty() || scripts.materials.contains(submesh.material)) continue;
            checkMaterial(package, kResources + name, submesh.material, report);
        }
    }
}

}  // namespace

void checkReferences(const PackageFiles& package, const ScriptContent& scripts, CheckReport& report) {
    checkSceneReferences(package, report);
    if (package.resources(".material").empty()) {
        report.note("resources", "there is no material script: the package was exported without materials");
        return;
    }
    checkSky(package, scripts, report);
    checkMaterials(package, scripts, report);
}

}  // namespace velinor
