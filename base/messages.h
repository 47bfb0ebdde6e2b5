// The catalogue of everything that a report can say. docs/messages.md is generated from it.
#pragma once

#include <span>
#include <string_view>

namespace velinor {

enum class Severity {
    note,     // worth knowing, nothing to do
    warning,  // in the package, and looks wrong
    skipped,  // not in the package
    error,    // the package is not complete
};

// One kind of message. The order here is the order of the catalogue.
enum class MessageId {
    nodeHidden,
    nodeLayerHidden,
    nodeNotSelected,
    nodeWithoutObject,
    nodeTypeNotExported,
    nodeLightsOff,
    nodeGeometryOff,
    nodeCamerasOff,
    nodeUnderDroppedParent,
    nodeExtraCamera,
    nodeExtraCameraBounds,
    nodeMirrored,
    nodeSingular,
    nodeNotFinite,
    nodeNameParameterIgnored,
    nodeParameterRepeated,
    panelFlat,
    meshNotTriangles,
    meshWithoutMaterial,
    meshEmpty,
    meshNotFinite,
    meshSmall,
    meshLarge,
    meshNameShared,
    meshNameChanged,
    toolMissing,
    toolPathNotNarrow,
    meshNotConverted,
    toolFailed,
    toolOutputEmpty,
    collisionMeshNotMade,
    lightDirection,
    nodeBelowLight,
    meshFileMissing,
    collisionMeshesOff,
    materialClassNotExported,
    materialParameterMissing,
    materialNamesEqual,
    materialTransparent,
    mapClassNotExported,
    mapSlotNotExported,
    textureMissing,
    textureUnreadable,
    texturePathMangled,
    textureNamesEqual,
    textureAlphaDoubtful,
    cubeMapMissing,
    cubeMapNameBreaksScript,
    cubeMapNotCube,
    customMapReplaced,
    fileNotWritten,
    dialogNotShown,
    sceneNotEnumerated,
    imageLibraryMissing,
    exportStopped,
    exportFailed,
};

struct Message {
    MessageId id;
    std::string_view code;  // stable name for programs, e.g. "node-hidden"
    Severity severity;
    std::string_view text;    // what is so, for a person, without the subject
    std::string_view advice;  // what to do about it; empty where there is nothing to do
};

// All messages, in the order of MessageId.
std::span<const Message> messageCatalogue();

const Message& message(MessageId id);

// "note", "warning", "skipped" or "error".
std::string_view severityName(Severity severity);

}  // namespace velinor
