// What must hold for every text that is read as a collision mesh or a material script.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "cli/collision_mesh_reader.h"
#include "cli/material_script_reader.h"

namespace velinor {

// Reads `text` as both. Ends the process where a promise is broken.
inline void fuzzPackageText(std::string_view text) {
    const auto require = [](bool holds) {
        if (!holds) std::abort();
    };
    try {
        const CollisionMesh mesh = readCollisionMesh(text);
        require(mesh.points > 0 && mesh.faces > 0);
    } catch (const CollisionMeshError& error) {
        require(!std::string_view(error.what()).empty());
    }

    const MaterialScript script = readMaterialScript(text);
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    for (const std::vector<ScriptName>* names : {&script.materials, &script.textures, &script.faults}) {
        std::size_t before = 0;
        for (const ScriptName& name : *names) {
            require(!name.name.empty() || names == &script.materials);
            require(name.name.find('\n') == std::string::npos);
            require(before <= name.line && name.line >= 1 && name.line <= lines);
            before = name.line;
        }
    }
}

}  // namespace velinor
