// The package that a system should make of a scene.
#pragma once

#include "tests/support/tree_compare.h"

namespace velinor {

// The expected package as this system has it. On Windows text files have other line ends, and the image
// library is another build, which compresses the pixels of the images that the exporter makes to other bytes:
// where `actual` has those pixels, its bytes are expected.
Tree expectedHere(Tree expected, const Tree& actual);

}  // namespace velinor
