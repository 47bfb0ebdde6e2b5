#include "hosts/import/scene_losses.h"

namespace velinor {
namespace {

// How a kind is told: `SINGULAR or PLURAL (names) has/have [AMOUNT] WHAT`.
struct LossText {
    std::string_view singular;
    std::string_view plural;
    bool hasAmount = false;
    std::string_view what;
};

LossText textOf(SceneLoss loss) {
    switch (loss) {
        case SceneLoss::vertexColours:
            return {"mesh", "meshes", false, "vertex colours, which are left out"};
        case SceneLoss::morphTargets:
            return {"mesh", "meshes", false, "morph targets, which are left out"};
        case SceneLoss::bones:
            return {"mesh", "meshes", false, "bones, which are left out: each stands as the file has it"};
        case SceneLoss::linesAndPoints:
            return {"mesh", "meshes", true, "lines or points beside triangles, which are left out"};
        case SceneLoss::degenerateTriangles:
            return {"mesh", "meshes", true, "triangles with a corner twice, which are left out"};
        case SceneLoss::infiniteTriangles:
            return {"mesh", "meshes", true,
                    "triangles with coordinates that are not finite, which are left out"};
        case SceneLoss::badTriangles:
            return {"mesh", "meshes", true, "triangles with vertices that do not exist, which are left out"};
        case SceneLoss::infiniteMapVertices:
            return {"mesh", "meshes", true,
                    "texture coordinates with numbers that are not finite, which become 0"};
        case SceneLoss::turnedFaces:
            return {"mesh", "meshes", false,
                    "faces that oppose their normals in the file, on a node that mirrors; they were turned"};
        case SceneLoss::manyMaterials:
            return {
                "mesh", "meshes", true,
                "materials beyond the 65536 that a mesh can have; their triangles take the last of those"};
        case SceneLoss::noTriangles:
            return {"node", "nodes", false, "a mesh without triangles, and is kept as a helper"};
        case SceneLoss::otherProperties:
            return {"node", "nodes", true, "user properties that are no 32-bit integers, which are left out"};
        case SceneLoss::reservedProperty:
            return {"node", "nodes", false,
                    "a user property \"extras\", which a snapshot cannot hold; rename it"};
        case SceneLoss::cutProperties:
            return {"node", "nodes", false, "user properties longer than can be read, which are cut"};
        case SceneLoss::cutName:
            return {"node", "nodes", false, "a name longer than can be read, which is cut"};
        case SceneLoss::badTransform:
            return {"node", "nodes", false,
                    "a transform with numbers that are not finite or too large, which is left out"};
        case SceneLoss::noTransform:
            return {"node", "nodes", false, "no transform in the file, so the place is the origin"};
        case SceneLoss::lostParent:
            return {
                "node", "nodes", false,
                "a parent that the file does not hold or has below the node, which then stands at the top, "
                "where it was"};
        case SceneLoss::ambientLight:
            return {"node", "nodes", false, "an ambient light, which is left out; a helper is kept"};
        case SceneLoss::volumeLight:
            return {"node", "nodes", false, "an area or volume light, which becomes a point light"};
        case SceneLoss::unknownLight:
            return {"node", "nodes", false,
                    "a light of a type that is not known, which becomes a point light"};
        case SceneLoss::brightLight:
            return {"node", "nodes", false,
                    "a light brighter than a package can say, which keeps its colour at full brightness"};
        case SceneLoss::lightBesideMesh:
            return {"node", "nodes", false,
                    "a light beside a mesh, which is left out; give it a node of its own"};
        case SceneLoss::lightWithoutNode:
            return {"light", "lights", false, "no node without a mesh that bears the name, and is left out"};
        case SceneLoss::cameraWithoutNode:
            return {"camera", "cameras", false,
                    "no node without a mesh that bears the name, and is left out"};
    }
    return {};
}

}  // namespace

void SceneLosses::add(SceneLoss loss, std::string_view name, std::uint64_t amount) {
    Things& things = byKind_[loss];
    things.names.add(name);
    things.amount += amount;
}

void SceneLosses::writeTo(ImportNotes& notes, const std::string& shown) const {
    for (const auto& [loss, things] : byKind_) {
        const LossText text = textOf(loss);
        std::string note = things.names.text(text.singular, text.plural);
        note += things.names.count() == 1 ? " has " : " have ";
        if (text.hasAmount) note += std::to_string(things.amount) + " ";
        notes.add(shown, note.append(text.what));
    }
}

}  // namespace velinor
