// One object of an ASE file: a node with what hangs on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "hosts/ase/ase_lexer.h"
#include "hosts/ase/ase_mesh.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// A number of the file's list of materials, and where it stands.
struct AseMaterialNumber {
    std::int64_t number = 0;
    std::size_t place = 0;
};

// What the block of an object holds. Texts are parts of the lexer's.
struct AseObject {
    std::int32_t type = 0;  // the host's type code
    std::string_view name = {};
    std::optional<std::string_view> parent = {};
    std::optional<host::GMatrix> objectToWorld = {};
    std::optional<AseMesh> mesh = {};
    std::optional<host::LightState> light = {};
    bool hasUnknownLight = false;  // its type is none of the known
    std::string_view helperClass = {};
    std::optional<AseMaterialNumber> material = {};
    bool isAnimated = false;
};

// Whether the keyword begins an object.
bool isAseObject(std::string_view keyword);

// Reads the block of that keyword, which comes next.
AseObject readAseObject(AseLexer& lexer, std::string_view keyword, AseProgress& progress);

}  // namespace velinor
