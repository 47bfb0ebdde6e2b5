// A small package written by hand, for damaging.
#pragma once

#include <filesystem>
#include <string>

namespace velinor {

// Writes a package into the existing folder `folder`. It is sound, and has of everything one:
//
//     index.jsx        Square.mesh, and "Big Box.mesh", which is Big_Box.mesh on disk
//     Square.mesh      materials Wood and Metal
//     Big_Box.mesh     material default, which has no script
//     Wood.material    textures wood.png, grey.tga and, as reflection, sky.dds
//     Metal.material   the same ones
//     FXUnlitSkyboxCubic.material
void writeSamplePackage(const std::filesystem::path& folder);

std::string readFile(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, const std::string& content);

// Replaces the first `old` in a file by `replacement`. A test fails where there is none.
void replaceInFile(const std::filesystem::path& file, const std::string& old, const std::string& replacement);

}  // namespace velinor
