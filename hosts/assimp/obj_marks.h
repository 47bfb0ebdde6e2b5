// What OBJ files hold and the library passes over or misplaces without a word, found by a look at their
// lines.
#pragma once

#include <istream>

#include "hosts/import/named_count.h"

namespace velinor {

struct ObjMarks {
    bool hasSmoothing = false;  // smoothing groups ("s") that no normals ("vn") stand for
    NamedCount reopened =
        {};  // objects ("o") that go on after another one; the library gives their faces to that one
};

// Reads `file` to its end.
ObjMarks readObjMarks(std::istream& file);

}  // namespace velinor
