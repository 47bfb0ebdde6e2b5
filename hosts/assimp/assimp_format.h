// The file formats that the library reads, as far as scenes of one are to be taken otherwise than those of
// another.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/assimp/assimp_reader.h"

struct aiImporterDesc;

namespace Assimp {
class Importer;
}

namespace velinor {

enum class FileFormat {
    fbx,
    gltf,
    collada,
    obj,
    threeDs,
    upright,      // Z-up as it stands: STL, PLY, OFF, Blender's, AMF, 3MF
    rotatedRoot,  // the root's matrix turns Z-up to Y-up: DXF, Quake models, IFC, ...
    yUp,          // Y-up, and the root's matrix is the file's own: X
    other,        // brought to Y-up by the library
};

// What is known of a file beside its content as the library shows it.
struct SourceFile {
    std::filesystem::path path;  // as the user named it
    std::string shown;           // the same, fit for one line
    std::string stem;            // the last component without its ending
    FileFormat format = FileFormat::other;
    std::string generator;  // the program that wrote the file, as it calls itself; empty: not told
    bool isAsciiFbx = false;
    std::optional<std::uint64_t> promisedFaces;  // by the header of a PLY or OFF file
    std::optional<std::uint64_t> heldFaces;      // in an ASCII PLY file; the library repeats the last instead
};

// An importer of all formats but ASE, whatever the ending of a file: of that format the library loses too
// much, and it crashes on damaged files.
std::unique_ptr<Assimp::Importer> makeImporter();

// What the library calls the format of one of its readers, and its endings in small letters.
std::string formatName(const aiImporterDesc& reader);
std::vector<std::string> endingsOf(const aiImporterDesc& reader);

// The format of the file that `importer` read last.
FileFormat formatLastRead(const Assimp::Importer& importer);

}  // namespace velinor
