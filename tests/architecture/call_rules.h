// Operations of the standard library that fail on some system, and have one of ours in their place.
#pragma once

#include <string>
#include <vector>

#include "tests/architecture/source_file.h"

namespace velinor {

// Every use of such an operation in `file`, as "path:line: what is wrong", in the order of the lines. Tests
// may use what they like.
std::vector<std::string> callFaults(const SourceFile& file);

}  // namespace velinor
