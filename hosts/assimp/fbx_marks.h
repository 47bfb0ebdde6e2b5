// What FBX files hold and the library passes over without a word, found by a look at their bytes.
#pragma once

#include <cstddef>
#include <istream>

namespace velinor {

// In text and binary files. Names and kinds of objects stand in both as they are; only arrays are packed.
struct FbxMarks {
    bool hasAnimation = false;    // curves that move something; they are not read at all
    bool hasSkin = false;         // vertices that follow bones; nor are these
    std::size_t hiddenNodes = 0;  // nodes hidden by their property "Visibility", whose type the library lacks
    std::size_t displayLayers = 0;  // layers, which may hide nodes

    bool operator==(const FbxMarks&) const = default;
};

// Reads `file` to its end, a piece at a time.
FbxMarks readFbxMarks(std::istream& file);

}  // namespace velinor
