// Reads of OGRE material scripts (".material") what the check of a package needs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// A name in a script.
struct ScriptName {
    std::string name;
    std::size_t line = 0;  // from 1

    bool operator==(const ScriptName&) const = default;
};

// What a script declares and needs.
struct MaterialScript {
    std::vector<ScriptName> materials;  // "material NAME"
    std::vector<ScriptName> textures;   // "texture NAME", "cubic_texture NAME combinedUVW"
    std::vector<ScriptName> faults;     // texts of what is wrong, with their lines
};

// Reads the script with the content `text`. Commands other than those are passed over, as are "//" comments.
// Faults are braces that do not pair, materials without a name, and texture names that OGRE reads differently
// from how they stand: with a blank, a brace or a colon in them, or a "$" at the start. Such names are not
// among the textures.
MaterialScript readMaterialScript(std::string_view text);

}  // namespace velinor
