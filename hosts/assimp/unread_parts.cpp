#include "hosts/assimp/unread_parts.h"

#include <fstream>
#include <string>

#include "hosts/assimp/collada_marks.h"
#include "hosts/assimp/fbx_marks.h"
#include "hosts/assimp/obj_marks.h"

namespace velinor {
namespace {

std::string counted(std::size_t count, const char* singular, const char* plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

void noteFbx(const FbxMarks& marks, const std::string& shown, ImportNotes& notes) {
    if (marks.hasAnimation) notes.add(shown, kAnimationsAreLeftOut);
    if (marks.hasSkin) notes.add(shown, "skins are left out: their meshes stand as the file has them");
    if (marks.hiddenNodes != 0) {
        notes.add(shown,
                  counted(marks.hiddenNodes, "node is", "nodes are") +
                      " hidden by the property \"Visibility\", which is not read; they are taken for shown, "
                      "so delete them, or hide them in 3ds Max and export from there");
    }
    if (marks.displayLayers != 0) {
        notes.add(shown, counted(marks.displayLayers, "display layer is", "display layers are") +
                             " left out: what a layer hides is taken for shown");
    }
}

void noteCollada(const ColladaMarks& marks, const std::string& shown, ImportNotes& notes) {
    if (marks.hasUserProperties) {
        notes.add(shown,
                  "user properties are left out: they are not read from COLLADA files; put what matters into "
                  "brackets behind the node's name");
    }
    if (marks.hiddenNodes != 0) {
        notes.add(shown, counted(marks.hiddenNodes, "node is", "nodes are") +
                             " hidden, which is not read from COLLADA files; they are taken for shown");
    }
}

void noteObj(const ObjMarks& marks, const std::string& shown, ImportNotes& notes) {
    if (marks.hasSmoothing) {
        notes.add(shown,
                  "smoothing groups are left out, so surfaces without normals are flat; save the file with "
                  "normals");
    }
    if (marks.reopened.count() != 0) {
        notes.add(shown,
                  marks.reopened.text("object", "objects") +
                      " of which the file has several pieces lose the faces of the later ones to the object "
                      "before them; give each object one piece");
    }
}

}  // namespace

void noteUnreadParts(const SourceFile& file, ImportNotes& notes) {
    std::ifstream stream(file.path, std::ios::binary);
    if (!stream) return;
    if (file.format == FileFormat::fbx) noteFbx(readFbxMarks(stream), file.shown, notes);
    if (file.format == FileFormat::collada) noteCollada(readColladaMarks(stream), file.shown, notes);
    if (file.format == FileFormat::obj) noteObj(readObjMarks(stream), file.shown, notes);
}

}  // namespace velinor
