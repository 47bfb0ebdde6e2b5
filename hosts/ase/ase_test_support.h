// ASE files made by hand, and looks into what is read of them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "hosts/ase/ase_reader.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"
#include "hosts/snapshot/snapshot_test_support.h"

namespace velinor {

// A scene as read, with the notes that came with it.
struct ReadAse : SceneUnderTest {
    ImportNotes notes;

    const SnapshotMesh& mesh(std::u16string_view name) const { return meshOf(node(name)); }

    // How many notes about `subject` have `part` in their text.
    int notesOf(std::string_view subject, std::string_view part) const {
        int count = 0;
        for (const ImportNote& note : notes.notes())
            count += note.subject == subject && note.text.find(part) != std::string::npos ? 1 : 0;
        return count;
    }
};

// The scene in `bytes`, checked by the rules of snapshots.
inline ReadAse readAseText(std::string bytes, const std::filesystem::path& file = "room.ase",
                           const AseOptions& options = {}) {
    ReadAse read;
    NoProgress progress;
    read.scene = readAse(std::move(bytes), file, options, progress, read.notes);
    checkSnapshot(read.scene, "scene");
    return read;
}

inline ReadAse readAseFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << "there is no " << file;
    return readAseText({std::istreambuf_iterator<char>(stream), {}}, file);
}

// The message with which `bytes` are refused; empty where they are not.
inline std::string aseRefusal(const std::string& bytes) {
    try {
        readAseText(bytes);
    } catch (const SceneError& error) {
        return error.what();
    }
    return {};
}

inline const std::string kAseHeader = "*3DSMAX_ASCIIEXPORT 200\n";

// A block, its content indented by nobody.
inline std::string aseBlock(const std::string& head, const std::string& content) {
    return "*" + head + " {\n" + content + "}\n";
}

inline std::string aseName(const std::string& name) {
    return "*NODE_NAME \"" + name + "\"\n";
}

// The transform of an unrotated node.
inline std::string aseTransform(const std::string& name, const std::string& position = "0 0 0",
                                const std::string& scale = "1") {
    return aseBlock("NODE_TM", aseName(name) + "*TM_ROW0 " + scale +
                                   " 0 0\n*TM_ROW1 0 1 0\n*TM_ROW2 0 0 1\n*TM_ROW3 " + position + "\n");
}

// A helper, the shortest object.
inline std::string aseHelper(const std::string& name, const std::string& parent = "") {
    const std::string link = parent.empty() ? "" : "*NODE_PARENT \"" + parent + "\"\n";
    return aseBlock("HELPEROBJECT", aseName(name) + link + aseTransform(name));
}

// A mesh block of the triangle (0,0,0) (1,0,0) (0,1,0); `more` follows its lists, `face` the corners.
inline std::string aseTriangle(const std::string& more = "", const std::string& face = "") {
    return aseBlock(
        "MESH",
        "*TIMEVALUE 0\n*MESH_NUMVERTEX 3\n*MESH_NUMFACES 1\n*MESH_VERTEX_LIST {\n"
        "*MESH_VERTEX 0 0 0 0\n*MESH_VERTEX 1 1 0 0\n*MESH_VERTEX 2 0 1 0\n}\n"
        "*MESH_FACE_LIST {\n*MESH_FACE    0:    A:    0 B:    1 C:    2 AB:    1 BC:    1 CA:    0 " +
            face + "\n}\n" + more);
}

inline std::string aseMeshObject(const std::string& name, const std::string& mesh,
                                 const std::string& more = "") {
    return aseBlock("GEOMOBJECT", aseName(name) + aseTransform(name) + mesh + more);
}

}  // namespace velinor
