// What COLLADA files hold and the library passes over without a word, found by a look at their text.
#pragma once

#include <cstddef>
#include <istream>

namespace velinor {

// Of the extensions that exporters of 3ds Max write.
struct ColladaMarks {
    bool hasUserProperties = false;
    std::size_t hiddenNodes = 0;

    bool operator==(const ColladaMarks&) const = default;
};

// Reads `file` to its end, a piece at a time. Packed files (.zae) have no marks.
ColladaMarks readColladaMarks(std::istream& file);

}  // namespace velinor
