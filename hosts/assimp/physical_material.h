// Materials with a base colour, roughness and metalness, as the host's "Physical Material".
#pragma once

#include <array>
#include <optional>

#include "hosts/assimp/material_source.h"

namespace velinor {

// The nine parameters that an exporter asks for. A "Physical Material" always has all of them.
struct PhysicalParameters {
    std::optional<SnapshotRef> baseColorMap = {};
    Colour baseColor{1, 1, 1, 1};
    float transparency = 0;
    std::optional<SnapshotRef> bumpMap = {};
    std::optional<SnapshotRef> roughnessMap = {};
    float roughness = 0;
    std::optional<SnapshotRef> metalnessMap = {};
    float metalness = 0;
    std::optional<SnapshotRef> emissionMap = {};
};

// The property container of a "Physical Material", in this order, maps that are not there as null.
std::vector<SnapshotProperty> physicalProperties(const PhysicalParameters& parameters);

// Whether an FBX file of 3ds Max says that the material is of a class with these parameters: Physical, PBR of
// both kinds, glTF, OpenPBR. An exporter knows one of them by name, so all are presented as that one.
bool isFbxPhysical(const MaterialValues& values);
PhysicalParameters fbxPhysical(const MaterialSource& source);

// Whether a material of another format has roughness, metalness or (of glTF) glossiness.
bool isPhysical(const MaterialValues& values);

// glTF 2, by metalness and roughness or by specular colour and glossiness; OBJ with such numbers; others.
PhysicalParameters physicalOf(const MaterialSource& source);

}  // namespace velinor
