// What is lost of a scene in an ASE file; docs/ase.md tells it at length.
#include "hosts/ase/ase_reader.h"

namespace velinor {

ReadableFormat aseFormat() {
    return {
        "3ds Max ASCII Scene Export",
        {"ase", "ask"},
        {},
        {"hidden nodes, layers, selection", "user properties", "instances (each becomes a mesh of its own)",
         "normals set by hand", "metalness and named maps of Physical Materials",
         "decimals of positions beyond those in the file"}};
}

}  // namespace velinor
