// Turns faces outward.
#pragma once

#include <span>

#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// Whether `faces` bound a solid: each edge is used as often in one direction as in the other.
bool isClosed(const Faces& faces);

// The volume inside of `faces`; negative where they are inside out, without meaning where they are not
// closed.
double signedVolume(std::span<const Point> points, const Faces& faces);

// Turns the faces of each closed part so that they agree with each other and face outward. A part is what
// hangs together by edges of exactly two faces. Parts that are open, or have only one side, keep their
// winding.
void orientOutward(std::span<const Point> points, Faces& faces);

}  // namespace velinor
