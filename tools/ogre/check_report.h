// What a check of a package finds.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tools/ogre/mesh_binary.h"

namespace velinor {

// Before the names of what lies there, as findings tell them.
inline constexpr const char* kResources = "resources/";

struct Finding {
    std::string file;  // in the package: "resources/Chair.mesh"
    std::string text;  // what is wrong there
};

struct SubmeshSummary {
    std::string material;
    std::uint64_t triangles = 0;
};

struct MeshSummary {
    std::uint32_t vertices = 0;
    std::vector<SubmeshSummary> submeshes;  // in the file's order
    MeshBounds bounds;                      // as the file states them
};

struct CheckReport {
    std::vector<Finding> faults;  // what keeps the runtime from showing the package as it is meant
    std::vector<Finding> notes;   // what looks like a fault and comes from the package format itself
    std::map<std::string, MeshSummary> meshes;  // by file name, "Chair.mesh"; those that could be read

    void fault(const std::string& file, const std::string& text) { faults.push_back({file, text}); }
    void note(const std::string& file, const std::string& text) { notes.push_back({file, text}); }
};

}  // namespace velinor
