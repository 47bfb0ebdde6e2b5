// Verifies a finished package.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// One thing that is wrong, or to be known.
struct PackageFault {
    std::string file;  // in the package, "index.jsx"
    std::string text;  // where in the file and what is wrong; UTF-8

    bool operator==(const PackageFault&) const = default;
};

// What a check finds: faults, and notes on what looks odd and is the way of the format.
struct PackageFindings {
    std::vector<PackageFault> faults;
    std::vector<PackageFault> notes;
};

// Verifies the package in `folder`. Faults are:
// - descriptors that are missing, malformed or lack something;
// - meshes and collision meshes that index.jsx names and that are not there or are malformed;
// - materials of these meshes without a script, scripts that OGRE does not read as they are meant, a sky that
// is
//   missing;
// - textures that a script names and that are not there or are empty.
// Notes are: a file whose name differs from the one in index.jsx, materials that get no script on any export,
// and a package without materials. Throws nothing for whatever stands in the files.
PackageFindings checkPackage(const std::filesystem::path& folder);

// The faults of a where.json and a webtables.json with the content `text`.
std::vector<PackageFault> checkWhereJson(const std::string& text);
std::vector<PackageFault> checkWebtablesJson(const std::string& text);

// Whether `name` can be the name of a file in a folder, and no way out of it.
bool isPlainFileName(std::string_view name);

}  // namespace velinor
