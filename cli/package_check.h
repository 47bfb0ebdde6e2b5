// Verifies a finished package.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace velinor {

// One fault of a package.
struct PackageFault {
    std::string file;  // in the package, "index.jsx"
    std::string text;  // where in the file and what is wrong; UTF-8

    bool operator==(const PackageFault&) const = default;
};

// The faults of the package in `folder`: descriptors that are missing, malformed or lack something, and files
// that index.jsx names and that are not there. Throws nothing for whatever stands in the files.
std::vector<PackageFault> checkPackage(const std::filesystem::path& folder);

// The faults of a where.json and a webtables.json with the content `text`.
std::vector<PackageFault> checkWhereJson(const std::string& text);
std::vector<PackageFault> checkWebtablesJson(const std::string& text);

}  // namespace velinor
