// Writes shapes as a Wavefront OBJ file.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// One group of an OBJ file.
struct Shape {
    std::string name;
    Faces faces;
};

// Writes `shapes` over `points` to `file`: complete, or not at all. The text goes to a file of another name
// in the same folder, which is renamed at the end and removed on failure; until then an existing `file` stays
// as it was. Numbers are the shortest that give the same 32-bit number again. Throws MeshError with the
// system's reason.
void writeObj(const std::filesystem::path& file, std::span<const Point> points,
              const std::vector<Shape>& shapes);

}  // namespace velinor
