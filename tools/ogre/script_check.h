// Checks the material scripts of a package.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tools/ogre/check_report.h"
#include "tools/ogre/package_files.h"

namespace velinor {

// A texture that a script names.
struct TextureUse {
    std::string script;   // the script's file name: "Wood.material"
    std::string unit;     // the texture unit: "diffuse_map"; may be empty
    std::string texture;  // the texture's file name
    bool isCube = false;
};

struct ScriptContent {
    std::map<std::string, std::string> materials;  // name, and the file name of the script that has it
    std::vector<TextureUse> textures;
};

// Has OGRE parse every script, with the programs that `programs` declares. Adds faults to `report`.
ScriptContent checkScripts(const PackageFiles& package, const std::filesystem::path& programs,
                           CheckReport& report);

}  // namespace velinor
