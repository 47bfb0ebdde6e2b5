#include "base/messages.h"

#include <array>

namespace velinor {
namespace {

using enum MessageId;
using enum Severity;

// clang-format off
constexpr auto kCatalogue = std::to_array<Message>({
    {nodeHidden, "node-hidden", skipped, "the node is hidden",
     "Unhide it, or export with \"Export hidden\" (--export-hidden)."},
    {nodeLayerHidden, "node-layer-hidden", skipped, "the node's layer is hidden",
     "Show the layer, or export with \"Export hidden\" (--export-hidden)."},
    {nodeNotSelected, "node-not-selected", skipped, "the node is not selected",
     "Select it, or export without \"Selection only\" (--no-selection-only)."},
    {nodeWithoutObject, "node-without-object", skipped, "the node has no object", ""},
    {nodeTypeNotExported, "node-type-not-exported", skipped, "objects of this type are not exported",
     "Meshes, lights, cameras and helpers are exported; convert a spline or bone to a mesh to keep its shape."},
    {nodeLightsOff, "node-lights-off", skipped, "lights are switched off for this export",
     "Export with \"Lights\" (--export-lights)."},
    {nodeGeometryOff, "node-geometry-off", skipped, "geometry is switched off for this export",
     "Export with \"Geometry\" (--export-geometry)."},
    {nodeCamerasOff, "node-cameras-off", skipped, "the camera is switched off for this export",
     "Export with \"Camera\" (--export-camera)."},
    {nodeUnderDroppedParent, "node-under-dropped-parent", skipped,
     "a node above it is not in the scene tree, so neither is this one",
     "Link the node to another parent, or to none."},
    {nodeExtraCamera, "node-extra-camera", skipped, "only the first camera becomes the start camera", ""},
    {nodeExtraCameraBounds, "node-extra-camera-bounds", skipped, "only the first camera-bounds node counts", ""},
    {nodeMirrored, "node-mirrored", warning, "the node is mirrored: its scale has a negative determinant",
     "Reset the transform (Reset XForm) if the mesh appears inside out."},
    {nodeSingular, "node-singular", warning, "the node is scaled to zero along an axis", "Give it a scale other than 0."},
    {nodeNotFinite, "node-not-finite", warning, "the node's transform holds numbers that are infinite or not numbers",
     "Reset the transform of the node and of those above it."},
    {nodeNameParameterIgnored, "node-name-parameter-ignored", warning,
     "a parameter in the node's name is not read",
     "Write \"Name [key: value, key: value]\": one space after each colon and comma, none in a value."},
    {nodeParameterRepeated, "node-parameter-repeated", warning,
     "parameters in the node's name bear the key of an earlier one or of a fixed attribute, and are not written",
     "Give each parameter a name of its own."},
    {panelFlat, "panel-flat", warning, "the web panel has no extent in x or y, so its resolution means nothing",
     "A panel lies in the x-y plane of its own object; set qv_wt_res_h to fix the resolution."},
    {meshNotTriangles, "mesh-not-triangles", skipped, "the host cannot give the object as triangles",
     "Convert it to an editable mesh."},
    {meshWithoutMaterial, "mesh-without-material", note,
     "the mesh has no material; it names the material \"default\", for which no script is written",
     "Give it a material."},
    {meshEmpty, "mesh-empty", warning, "the mesh has no faces, so there is nothing to draw",
     "Delete the node, or give it geometry."},
    {meshNotFinite, "mesh-not-finite", warning, "vertices of the mesh lie at places that are infinite or not numbers",
     "Delete these vertices; the converter fails on such a mesh, and the runtime may."},
    {meshSmall, "mesh-small", warning, "the mesh is so small that six decimals lose its shape",
     "Scale the mesh up and its node down, or work in smaller units."},
    {meshLarge, "mesh-large", warning, "the mesh is so large that 32-bit numbers lose its details",
     "Work in larger units, or split the mesh."},
    {meshNameShared, "mesh-name-shared", warning, "two meshes have the same file name, and the later one replaces the earlier",
     "Rename one of the nodes; in file names every character but ASCII letters, digits, \"-\" and \".\" counts as \"_\"."},
    {meshNameChanged, "mesh-name-changed", note,
     "index.jsx refers to the mesh by the node's name, its file has another",
     "Stock OGRE does not find it; use ASCII letters, digits, \"-\" and \".\" in the node's name."},
    {toolMissing, "tool-missing", warning, "a tool of the exporter is missing or cannot be started, so no file that it makes will be there",
     "Install the tools again."},
    {toolPathNotNarrow, "tool-path-not-narrow", warning,
     "the path of a tool of the exporter holds characters that the system's code page lacks, so it cannot be started",
     "Install the exporter in a folder with a plain ASCII path."},
    {meshNotConverted, "mesh-not-converted", skipped, "the converter made no .mesh file",
     "See what the converter said; the node stands in failed_mesh.txt."},
    {toolFailed, "tool-failed", warning, "the tool failed, and the file that it left may be damaged",
     "Check the mesh; see what the tool said."},
    {toolOutputEmpty, "tool-output-empty", warning, "the tool left an empty file",
     "Check the mesh; see what the tool said."},
    {collisionMeshNotMade, "collision-mesh-not-made", skipped, "no collision mesh was made",
     "See what the tool said; the node stands in failed_physics.txt."},
    {lightDirection, "light-direction", note,
     "lights shine along the local -Z of their nodes, as in the host; the direction written with them is always the same",
     "A viewer that turns that direction with the node, as stock OGRE does, has to ignore it."},
    {nodeBelowLight, "node-below-light", warning,
     "the node hangs below a light, whose node is written with a turn of its own, so the node comes out elsewhere",
     "Link it to the light's parent."},
    {meshFileMissing, "mesh-file-missing", warning, "index.jsx names a mesh file that is not in the package", ""},
    {collisionMeshesOff, "collision-meshes-off", note,
     "no collision meshes are made, but index.jsx names one for each mesh",
     "Export with \"Generate physical meshes\" (--generate-physical-meshes)."},
    {materialClassNotExported, "material-class-not-exported", skipped,
     "materials of this class are not exported; the names of its properties are listed instead",
     "Use a \"Physical Material\" or a \"Standard\" material."},
    {materialParameterMissing, "material-parameter-missing", warning,
     "parameters of the physical material are missing or of another type, and their channels keep their defaults",
     "Apply a fresh \"Physical Material\", or set the values again."},
    {materialNamesEqual, "material-names-equal", warning,
     "two materials end on the same script name, and the later script replaces the earlier",
     "Rename one: only ASCII letters, digits, \"-\" and \".\" tell names apart, all else becomes \"_\"."},
    {materialTransparent, "material-transparent", note,
     "the material is blended, and the faces behind it show through",
     "Viewers may draw blended faces in the wrong order; set the transparency to 0 if the material is meant opaque."},
    {mapClassNotExported, "map-class-not-exported", skipped, "texture maps of this class are not exported",
     "Render the map to a bitmap and use that; only a \"Bitmap\" is exported, alone or in a \"Normal Bump\"."},
    {mapSlotNotExported, "map-slot-not-exported", skipped, "the map in this slot of the material is not exported",
     "Diffuse (1), specular colour (2), specular level (3), self-illumination (5) and bump (8) are."},
    {textureMissing, "texture-missing", skipped, "the texture's file does not exist, so the package lacks it",
     "Relink the map to its file, or put the file beside the scene."},
    {textureUnreadable, "texture-unreadable", skipped, "the texture's file cannot be read, so the package lacks it",
     "Check that it is a file and that you may read it."},
    {texturePathMangled, "texture-path-mangled", warning,
     "the path of the texture's file holds characters that the exporter cannot keep, so another file is found, or none",
     "Use plain ASCII characters in the names of the file and its folders."},
    {textureNamesEqual, "texture-names-equal", warning,
     "two textures of different content end on the same file name, so only one of them is in the package",
     "Rename one of the files: only ASCII letters, digits, \"-\" and \".\" tell names apart."},
    {textureAlphaDoubtful, "texture-alpha-doubtful", warning,
     "the alpha of the texture could not be looked at as a whole, so the material may be blended or opaque by mistake",
     "Save the texture anew as a PNG with red, green, blue and alpha."},
    {cubeMapMissing, "cube-map-missing", skipped, "the cube map does not exist, so the package lacks it",
     "Choose an existing file (--custom-environment-map, --custom-reflection-map), or none for the default."},
    {cubeMapNameBreaksScript, "cube-map-name-breaks-script", warning,
     "the cube map's file name is written into material scripts, which cannot hold it",
     "Rename the file: no blanks, no \"{\", \"}\", \":\" or quotes, and no \"$\" at the start."},
    {cubeMapNotCube, "cube-map-not-cube", warning,
     "the file is no cube map, and all faces but the first stay black",
     "Choose a DDS file with all six faces of a cube."},
    {customMapReplaced, "custom-map-replaced", warning,
     "no file of this name exists, so another map takes its place",
     "Choose the file with \"Browse...\" (--custom-environment-map, --custom-reflection-map); a typed path has no quotes and no "
     "blank before it."},
    {fileNotWritten, "file-not-written", error, "the file could not be written",
     "Check free space and permissions of the folder, and export again."},
    {dialogNotShown, "dialog-not-shown", warning, "the options dialog could not be shown; the settings are used as they are", ""},
    {sceneNotEnumerated, "scene-not-enumerated", error, "the host could not enumerate its scene",
     "Restart the host program and export again; 3ds Max needs its IGameProp.xml for this, too: repair its installation where "
     "that is missing."},
    {imageLibraryMissing, "image-library-missing", error, "the image library cannot be loaded, so nothing was exported",
     "Install the plug-in again: the folder \"tolvex\" beside it holds libvips-42.dll."},
    {exportStopped, "export-stopped", error, "the export was stopped, so the package is not complete", ""},
    {exportFailed, "export-failed", error, "the export broke off, so the package is not complete", ""},
});
// clang-format on

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < kCatalogue.size(); ++i) {
        if (static_cast<std::size_t>(kCatalogue[i].id) != i) return false;
    }
    return true;
}
static_assert(isInOrder(), "the catalogue lists its messages in the order of MessageId");

}  // namespace

std::span<const Message> messageCatalogue() {
    return kCatalogue;
}

const Message& message(MessageId id) {
    return kCatalogue.at(static_cast<std::size_t>(id));
}

std::string_view severityName(Severity severity) {
    switch (severity) {
        case note:
            return "note";
        case warning:
            return "warning";
        case skipped:
            return "skipped";
        case error:
            return "error";
    }
    return "";
}

}  // namespace velinor
